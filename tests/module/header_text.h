// What core/interfaces.h declares, read from its text: so that the IDL and the type library are
// held against the header itself and not against a copy of it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "module/declaration_reader.h"

struct DeclaredMethod {
  std::string name;
  std::vector<DeclaredParameter> parameters;
};

struct HeaderText {
  /// Raises std::runtime_error where the text is none that it knows.
  explicit HeaderText(std::string_view text);

  std::map<std::string, std::vector<DeclaredMethod>> interfaces;  ///< methods in slot order
  std::map<std::string, DeclaredValues> enumerations;
  std::map<std::string, std::vector<DeclaredParameter>> records;
  std::map<std::string, std::string> identifiers;  ///< "{XXXXXXXX-...}" by constant
};

/// The text of a file below src/.
std::string SourceText(const std::string& path);

/// The text of core/interfaces.h, with the texts of its parts in core/interfaces/ where it includes
/// them.
std::string PublicHeaderText();

inline HeaderText PublicHeader() { return HeaderText(PublicHeaderText()); }

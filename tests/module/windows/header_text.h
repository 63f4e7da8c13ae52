// What core/interfaces.h declares, read from its text: so that the type library is held against the
// header itself and not against a copy of it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

struct DeclaredParameter {
  std::string type;  ///< as written, with blanks taken out before stars
  std::string name;
};

struct DeclaredMethod {
  std::string name;
  std::vector<DeclaredParameter> parameters;
};

struct HeaderText {
  /// Reads the header at a path. Raises std::runtime_error where its text is none that it knows.
  explicit HeaderText(const std::string& path);

  std::map<std::string, std::vector<DeclaredMethod>> interfaces;  ///< methods in slot order
  std::map<std::string, std::vector<std::pair<std::string, std::int64_t>>> enumerations;
  std::map<std::string, std::vector<DeclaredParameter>> records;
  std::map<std::string, std::string> identifiers;  ///< "{XXXXXXXX-...}" by constant
};

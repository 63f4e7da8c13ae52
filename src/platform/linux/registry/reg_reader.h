#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/registry/reg_file.h"

/// Reads the lines of a .reg file into a RegFile. One use.
class RegReader {
 public:
  explicit RegReader(RegFile& file) : m_file(file) {}

  /// See RegFile::Parse; the file is empty at first.
  bool Read(std::string_view bytes);

 private:
  bool Decode(std::string_view bytes);
  /// Ends before the line feed, which is taken too. Call while m_rest is not empty.
  std::u16string_view NextLine();
  void ReadSection(std::u16string_view line);
  void ReadValue(std::u16string_view line);
  void ReadText(std::u16string_view name, std::u16string_view data);
  void ReadHex(std::u16string_view name, std::u16string_view data);
  std::optional<std::u16string> ReadHexLines(std::u16string_view line, std::string& bytes);
  void StoreHex(std::u16string_view name, std::u16string_view prefix, std::u16string_view lines,
                const std::string& bytes);

  RegFile& m_file;
  std::u16string m_text;
  std::u16string_view m_rest;  ///< behind the current line
  std::u16string m_key;        ///< empty: the values that follow belong to no key
  bool m_isOld = false;        ///< REGEDIT4: its bytes are in the code page
};

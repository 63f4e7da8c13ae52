#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com.h"

/// A code page of Windows in which every character is one or two bytes and one UTF-16 unit. The
/// tables are filled once, through iconv and with what Windows has beyond it, and then only read,
/// by any thread.
class CodePage {
 public:
  static constexpr UINT kUtf8 = 65001;

  /// The process's code page; null for UTF-8. Stays valid until the process ends.
  static const CodePage* Current();
  /// E_INVALIDARG, and no change, for a code page that cannot be had.
  static HRESULT SetCurrent(UINT number);

  /// Bytes without a character become U+FFFD: one for a lead byte with the byte behind it, unless
  /// that is missing or zero.
  std::u16string Decode(std::string_view narrow) const;
  /// Units without a character become a question mark each. Some units have bytes that read back as
  /// a likeness: a full-width form, or a letter and its accent.
  std::string Encode(std::u16string_view wide) const;
  /// See text::CutLength.
  std::size_t CutLength(std::string_view narrow, std::size_t limit) const;

 private:
  CodePage() = default;
  static const CodePage* Find(UINT number);
  bool Fill(UINT number);
  bool FillDecoding(const char* name);
  void FillHoles(UINT number);
  bool FillEncoding(const char* name);
  bool IsCode(unsigned code) const;
  std::size_t LengthAt(std::string_view narrow, std::size_t index) const;

  bool m_isLead[256] = {};
  /// By lead byte * 256 + trail byte; single bytes stand in row 0. U+FFFD: none.
  std::vector<char16_t> m_wide;
  /// By unit: lead byte * 256 + trail byte. 0: none, but for U+0000.
  std::vector<std::uint16_t> m_narrow;
};

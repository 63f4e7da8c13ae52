#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "kit/model/narrow_text.h"

namespace zortunedex::kit::check {

/// What becomes of a file's texts in the code page.
class CodePageText {
 public:
  /// The database has to stay.
  explicit CodePageText(const Database& database);

  /// A text in the code page.
  struct Narrow {
    std::string bytes;
    bool isWhole = true;  ///< the code page has every character
  };
  /// Of UTF-8. Of a long text only the beginning, more than attributes are read into.
  Narrow Of(std::string_view utf8);
  /// At most so many bytes of it, cut between two characters. Stays as long as the text and the
  /// room, which is used where the text is other bytes in the code page.
  std::string_view Cut(std::string_view utf8, std::size_t limit, std::string& room);

  /// UTF-8 of bytes in the code page; nothing for bytes that are no text there.
  std::optional<std::string> Decode(std::string_view narrow);
  /// Wide text of bytes in the code page.
  WideText ToWide(std::string_view narrow);
  /// The beginning of a narrow text, up to a limit and cut between two characters.
  std::string_view CutNarrow(std::string_view narrow, std::size_t limit);

 private:
  Narrow Convert(WideView wide);

  NarrowText m_narrow;
  bool m_isUtf8;
  std::unordered_map<std::string, Narrow> m_known;
};

/// True for a text of ASCII alone.
bool IsAscii(std::string_view text);

}  // namespace zortunedex::kit::check

// What stands in values and texts for something else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/text/damage.h"
#include "kit/xml/text/edits.h"
#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

struct Reference {
  std::size_t size = 0;         ///< from & up to and with ; or 0 when it is none
  std::uint32_t character = 0;  ///< one that XML does not have, perhaps
};

/// The reference at the front of a text that begins with &: one of the five entities, or a
/// character by its number.
Reference ReferenceAt(std::string_view text);

/// The text with its references replaced; & that begins none stays, and characters that XML does
/// not have become U+FFFD. `isValue` makes blanks of tabs and line breaks that stand there as such.
std::string Resolved(std::string_view raw, bool isValue);

/// In a text no ">" may stand behind so many "]".
inline constexpr std::size_t kCdataBrackets = 2;

/// One kind of damage in a value or a text: where the first one is, and what mends them all.
struct RawMark {
  Reason reason = Reason::RawAmpersand;
  Span span;
  std::vector<Edit> mends;
};

/// Markup that stands there as such, and references to characters that XML does not have. `quote`
/// is the one around a value; zero for a text, which may stand right behind so many "]" once what
/// is between them is gone. Ends when there are more mends than kMostDamages.
std::vector<RawMark> FindRawMarks(std::string_view bytes, Span span, char quote,
                                  std::size_t brackets = 0);
/// How many "]" stand at the end of a text that stands right behind so many others; more than
/// kCdataBrackets do not matter.
std::size_t BracketsBehind(std::string_view text, std::size_t brackets);

}  // namespace zortunedex::kit::markup

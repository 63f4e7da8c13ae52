// The tokens of a file. Any bytes at all have tokens, and the tokens' bytes, one behind the other,
// are the file.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

enum class TokenKind : std::uint8_t {
  Start,        ///< <a b="c">
  Empty,        ///< <a b="c"/>
  End,          ///< </a>
  Text,         ///< what stands between the others, white space too
  Comment,      ///< <!-- -->
  Cdata,        ///< <![CDATA[ ]]>
  Doctype,      ///< <!DOCTYPE >
  Instruction,  ///< <? ?>, the XML declaration too
  Damaged,      ///< begins like one of these and does not end as it has to
};

struct Token {
  TokenKind kind = TokenKind::Text;
  Span span;

  bool operator==(const Token&) const = default;
};

/// The tokens of any bytes up to kLargestFile. A tag whose attributes are not what XML wants them
/// to be is still a tag where its end can be told.
std::vector<Token> Tokens(std::string_view bytes);

}  // namespace zortunedex::kit::markup

#pragma once

#include <cstddef>
#include <string_view>

#include "kit/xml/text/damage.h"
#include "kit/xml/text/forward_search.h"
#include "kit/xml/tokens/tag_reader.h"
#include "kit/xml/tokens/tokens.h"

namespace zortunedex::kit::markup {

/// A token, and what is wrong with it.
struct Piece {
  Token token;
  bool isBroken = false;  ///< for the reason; what is damaged as a whole is always
  Reason reason = Reason::BrokenMarkup;
};

/// Cuts a file into pieces, one at a time. A byte order mark is a text of its own.
class Tokenizer {
 public:
  /// The bytes have to stay.
  explicit Tokenizer(std::string_view bytes);

  /// False at the end.
  bool Next(Piece& piece);
  /// Goes on behind an end that is farther than that of the last piece.
  void MoveTo(std::size_t place) { m_at = place; }

  /// The tag of the last piece, where that is one.
  Tag& CurrentTag() { return m_tag; }
  /// Name in the end tag that the last piece is, also in a broken one.
  std::string_view EndName() const { return m_endName.In(m_bytes); }

 private:
  bool BeginsMarkup(std::size_t at) const;
  bool BeginsName(std::size_t at) const;
  Piece Take(TokenKind kind, std::size_t end);
  Piece TakeBroken(TokenKind kind, std::size_t end, Reason reason);
  Piece TakeText();
  Piece TakeTag();
  Piece TakeEndTag();
  Piece TakeUpTo(TokenKind kind, std::size_t opening, ForwardSearch& marks, std::size_t markSize,
                 Reason reason);
  Piece TakeDoctype();
  Piece TakeOther(Reason reason);
  std::size_t DoctypeEnd() const;
  std::size_t ShortEnd(std::size_t from);

  std::string_view m_bytes;
  std::size_t m_at = 0;
  TagReader m_tags;
  Tag m_tag;
  Span m_endName;
  bool m_hasDoctype = false;
  ForwardSearch m_opening;
  ForwardSearch m_closing;
  ForwardSearch m_commentEnds;
  ForwardSearch m_cdataEnds;
  ForwardSearch m_instructionEnds;
};

}  // namespace zortunedex::kit::markup

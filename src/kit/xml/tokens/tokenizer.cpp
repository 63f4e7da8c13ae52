#include "kit/xml/tokens/tokenizer.h"

#include <algorithm>

#include "kit/text/utf.h"
#include "kit/xml/text/characters.h"

namespace zortunedex::kit::markup {
namespace {

constexpr std::string_view kComment = "<!--";
constexpr std::string_view kCommentEnd = "-->";
constexpr std::string_view kCdata = "<![CDATA[";
constexpr std::string_view kCdataEnd = "]]>";
constexpr std::string_view kInstruction = "<?";
constexpr std::string_view kInstructionEnd = "?>";
constexpr std::string_view kDoctype = "<!DOCTYPE";

}  // namespace

Tokenizer::Tokenizer(std::string_view bytes)
    : m_bytes(bytes),
      m_tags(bytes),
      m_opening(bytes, "<"),
      m_closing(bytes, ">"),
      m_commentEnds(bytes, kCommentEnd),
      m_cdataEnds(bytes, kCdataEnd),
      m_instructionEnds(bytes, kInstructionEnd) {}

bool Tokenizer::Next(Piece& piece) {
  if (m_at >= m_bytes.size()) return false;
  const std::string_view rest = m_bytes.substr(m_at);
  if (m_at == 0 && rest.starts_with(kByteOrderMark)) {
    piece = Take(TokenKind::Text, kByteOrderMark.size());
  } else if (rest[0] != '<' || !BeginsMarkup(m_at)) {
    piece = TakeText();
  } else if (rest.starts_with(kComment)) {
    piece = TakeUpTo(TokenKind::Comment, kComment.size(), m_commentEnds, kCommentEnd.size(),
                     Reason::BrokenComment);
  } else if (rest.starts_with(kCdata)) {
    piece = TakeUpTo(TokenKind::Cdata, kCdata.size(), m_cdataEnds, kCdataEnd.size(),
                     Reason::BrokenCdata);
  } else if (rest.starts_with(kInstruction)) {
    piece = TakeUpTo(TokenKind::Instruction, kInstruction.size(), m_instructionEnds,
                     kInstructionEnd.size(), Reason::BrokenInstruction);
  } else if (rest.starts_with(kDoctype)) {
    piece = TakeDoctype();
  } else if (rest[1] == '!') {
    piece = TakeOther(Reason::BrokenMarkup);
  } else if (rest[1] == '/') {
    piece = TakeEndTag();
  } else {
    piece = TakeTag();
  }
  return true;
}

bool Tokenizer::BeginsMarkup(std::size_t at) const {
  if (at + 1 >= m_bytes.size()) return false;
  const char next = m_bytes[at + 1];
  return next == '/' || next == '!' || next == '?' || BeginsName(at + 1);
}

bool Tokenizer::BeginsName(std::size_t at) const {
  if (at >= m_bytes.size() || !Is(m_bytes[at], kNameStartByte)) return false;
  if (!Is(m_bytes[at], kHighByte)) return true;
  std::string_view rest = m_bytes.substr(at);
  const std::optional<std::uint32_t> character = utf::Next(rest);
  return character && IsNameStart(*character);
}

Piece Tokenizer::Take(TokenKind kind, std::size_t end) {
  Piece piece;
  piece.token = {kind, {m_at, end}};
  m_at = end;
  return piece;
}

Piece Tokenizer::TakeBroken(TokenKind kind, std::size_t end, Reason reason) {
  Piece piece = Take(kind, end);
  piece.isBroken = true;
  piece.reason = reason;
  return piece;
}

Piece Tokenizer::TakeText() {
  std::size_t end = m_opening.From(m_at);
  while (end < m_bytes.size() && !BeginsMarkup(end)) end = m_opening.From(end + 1);
  return Take(TokenKind::Text, end);
}

Piece Tokenizer::TakeTag() {
  m_tags.Read(m_at, m_tag);
  if (m_tag.isCut) return TakeBroken(TokenKind::Damaged, m_tag.span.end, Reason::Truncated);
  return Take(m_tag.isEmpty ? TokenKind::Empty : TokenKind::Start, m_tag.span.end);
}

Piece Tokenizer::TakeEndTag() {
  const std::size_t name = m_at + 2;
  if (!BeginsName(name)) return TakeOther(Reason::BrokenEndTag);
  std::size_t end = name;
  while (end < m_bytes.size() && Is(m_bytes[end], kNameByte)) ++end;
  m_endName = {name, end};
  const std::size_t mark = SkipBlanks(m_bytes, end);
  if (mark < m_bytes.size() && m_bytes[mark] == '>') return Take(TokenKind::End, mark + 1);
  if (mark == m_bytes.size()) return TakeBroken(TokenKind::Damaged, mark, Reason::Truncated);
  return TakeBroken(TokenKind::End, std::max(end, ShortEnd(end)), Reason::BrokenEndTag);
}

Piece Tokenizer::TakeUpTo(TokenKind kind, std::size_t opening, ForwardSearch& marks,
                          std::size_t markSize, Reason reason) {
  const std::size_t mark = marks.From(m_at + opening);
  if (mark < m_bytes.size()) return Take(kind, mark + markSize);
  const std::size_t end = m_opening.From(m_at + 1);
  return TakeBroken(TokenKind::Damaged, end, end < m_bytes.size() ? reason : Reason::Truncated);
}

Piece Tokenizer::TakeDoctype() {
  // There may be one. Of others only the first mark is looked for.
  const std::size_t end = m_hasDoctype ? std::string_view::npos : DoctypeEnd();
  m_hasDoctype = true;
  return end == std::string_view::npos ? TakeOther(Reason::Doctype) : Take(TokenKind::Doctype, end);
}

/// Behind the ">" that is in no quotation marks, no brackets and no comment.
std::size_t Tokenizer::DoctypeEnd() const {
  bool isInside = false;
  std::size_t at = m_at + kDoctype.size();
  while (at < m_bytes.size()) {
    const std::string_view rest = m_bytes.substr(at);
    std::string_view skipped;
    if (rest[0] == '"') skipped = "\"";
    if (rest[0] == '\'') skipped = "'";
    if (rest.starts_with(kComment)) skipped = kCommentEnd;
    if (rest.starts_with(kInstruction)) skipped = kInstructionEnd;
    if (!skipped.empty()) {
      const std::size_t end = rest.find(skipped, 1);
      if (end == std::string_view::npos) return end;
      at += end + skipped.size();
      continue;
    }
    if (rest[0] == '<' && !isInside) return std::string_view::npos;
    if (rest[0] == '[') isInside = true;
    if (rest[0] == ']') isInside = false;
    ++at;
    if (rest[0] == '>' && !isInside) return at;
  }
  return std::string_view::npos;
}

Piece Tokenizer::TakeOther(Reason reason) {
  const bool isDoctype = reason == Reason::Doctype;
  const std::size_t least = m_at + (isDoctype ? kDoctype.size() : 2);
  const std::size_t end = std::max(least, ShortEnd(least));
  return TakeBroken(isDoctype ? TokenKind::Doctype : TokenKind::Damaged, end, reason);
}

/// Behind the next ">", as far as no "<" and no new line of markup comes first; else `from`.
std::size_t Tokenizer::ShortEnd(std::size_t from) {
  if (from >= m_bytes.size()) return m_bytes.size();
  const std::size_t mark = m_closing.From(from);
  const bool isNear = mark < m_opening.From(from) && mark < m_tags.LimitOf(m_at);
  return isNear ? mark + 1 : from;
}

}  // namespace zortunedex::kit::markup

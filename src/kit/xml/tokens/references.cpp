#include "kit/xml/tokens/references.h"

#include <algorithm>
#include <utility>

#include "kit/text/utf.h"
#include "kit/xml/text/characters.h"

namespace zortunedex::kit::markup {
namespace {

struct Entity {
  std::string_view text;
  char character;
};

constexpr Entity kEntities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

/// -1 for what is no digit.
int DigitOf(char byte, std::uint32_t base) {
  int digit = -1;
  if (byte >= '0' && byte <= '9') digit = byte - '0';
  if (base == 16 && byte >= 'a' && byte <= 'f') digit = byte - 'a' + 10;
  if (base == 16 && byte >= 'A' && byte <= 'F') digit = byte - 'A' + 10;
  return digit;
}

Reference CharacterReferenceAt(std::string_view text) {
  const bool isHexadecimal = text.starts_with("&#x");
  const std::uint32_t base = isHexadecimal ? 16 : 10;
  const std::size_t first = isHexadecimal ? 3 : 2;
  constexpr std::uint32_t kBeyond = 0x110000;
  Reference reference;
  std::size_t at = first;
  for (; at < text.size(); ++at) {
    const int digit = DigitOf(text[at], base);
    if (digit < 0) break;
    reference.character =
        std::min(kBeyond, reference.character * base + static_cast<std::uint32_t>(digit));
  }
  if (at > first && at < text.size() && text[at] == ';') reference.size = at + 1;
  return reference;
}

class MarkFinder {
 public:
  MarkFinder(std::string_view bytes, Span span, char quote, std::size_t brackets)
      : m_bytes(bytes), m_span(span), m_quote(quote), m_brackets(brackets) {}

  std::vector<RawMark> Find() {
    for (std::size_t at = m_span.begin; at < m_span.end && !HasTooMany();) at += Take(at);
    std::vector<RawMark> marks;
    for (RawMark* mark : {&m_markup, &m_forbidden}) {
      if (!mark->mends.empty()) marks.push_back(std::move(*mark));
    }
    return marks;
  }

 private:
  bool HasTooMany() const {
    return m_markup.mends.size() + m_forbidden.mends.size() > kMostDamages;
  }

  /// Answers how many bytes that was.
  std::size_t Take(std::size_t at) {
    const char byte = m_bytes[at];
    if (byte == '&') return TakeAmpersand(at);
    if (byte == '<') return Add(m_markup, Reason::RawLess, {at, at + 1}, "&lt;");
    if (m_quote != '\0' && byte == m_quote) {
      return Add(m_markup, Reason::RawQuote, {at, at + 1}, byte == '"' ? "&quot;" : "&apos;");
    }
    const bool isCdataEnd =
        m_quote == '\0' && byte == '>' &&
        BracketsBehind(Span(m_span.begin, at).In(m_bytes), m_brackets) == kCdataBrackets;
    if (isCdataEnd) return Add(m_markup, Reason::RawCdataEnd, {at, at + 1}, "&gt;");
    return 1;
  }

  std::size_t TakeAmpersand(std::size_t at) {
    const Reference reference = ReferenceAt(Span(at, m_span.end).In(m_bytes));
    if (reference.size == 0) return Add(m_markup, Reason::RawAmpersand, {at, at + 1}, "&amp;");
    if (IsCharacter(reference.character)) return reference.size;
    return Add(m_forbidden, Reason::ForbiddenCharacter, {at, at + reference.size}, "\xEF\xBF\xBD");
  }

  static std::size_t Add(RawMark& mark, Reason reason, Span span, const char* text) {
    if (mark.mends.empty()) {
      mark.reason = reason;
      mark.span = span;
    }
    mark.mends.push_back({span, text});
    return span.Size();
  }

  std::string_view m_bytes;
  Span m_span;
  char m_quote;
  std::size_t m_brackets;
  RawMark m_markup;
  RawMark m_forbidden;
};

}  // namespace

Reference ReferenceAt(std::string_view text) {
  if (text.starts_with("&#")) return CharacterReferenceAt(text);
  for (const Entity& entity : kEntities) {
    if (text.starts_with(entity.text)) {
      return {entity.text.size(), static_cast<std::uint32_t>(entity.character)};
    }
  }
  return {};
}

std::string Resolved(std::string_view raw, bool isValue) {
  std::string text;
  text.reserve(raw.size());
  while (!raw.empty()) {
    const char byte = raw[0];
    if (byte == '&') {
      const Reference reference = ReferenceAt(raw);
      if (reference.size > 0) {
        const bool isGood = IsCharacter(reference.character);
        utf::Append(text, isGood ? reference.character : utf::kReplacement);
        raw.remove_prefix(reference.size);
        continue;
      }
    }
    // CR LF is one line break.
    if (byte == '\r' && raw.starts_with("\r\n")) raw.remove_prefix(1);
    text += isValue && Is(byte, kLineByte) ? ' ' : byte == '\r' ? '\n' : byte;
    raw.remove_prefix(1);
  }
  return text;
}

std::vector<RawMark> FindRawMarks(std::string_view bytes, Span span, char quote,
                                  std::size_t brackets) {
  return MarkFinder(bytes, span, quote, brackets).Find();
}

std::size_t BracketsBehind(std::string_view text, std::size_t brackets) {
  std::size_t count = 0;
  while (count < kCdataBrackets && text.ends_with(']')) {
    text.remove_suffix(1);
    ++count;
  }
  return text.empty() ? std::min(kCdataBrackets, count + brackets) : count;
}

}  // namespace zortunedex::kit::markup

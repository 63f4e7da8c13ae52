#include "kit/xml/tokens/tag_reader.h"

#include <algorithm>
#include <utility>

#include "kit/xml/text/characters.h"
#include "kit/xml/text/damage.h"

namespace zortunedex::kit::markup {
namespace {

constexpr std::string_view kNamespaceName = "xmlns";

bool IsQuote(char byte) { return byte == '"' || byte == '\''; }

/// More than anybody makes are not collected; one more tells that there are.
void Mend(Tag& tag, Edit edit) {
  if (tag.mends.size() <= kMostDamages) tag.mends.push_back(std::move(edit));
}

}  // namespace

TagReader::TagReader(std::string_view bytes)
    : m_bytes(bytes),
      m_double{ForwardSearch(bytes, "\"")},
      m_single{ForwardSearch(bytes, "'")},
      m_tagEnds(bytes, ">") {}

void TagReader::Read(std::size_t begin, Tag& tag) {
  tag.span = {begin, begin};
  tag.name = {begin + 1, NameEnd(begin + 1)};
  tag.isGuessed = !ReadSound(tag);
  if (tag.isGuessed) ReadBroken(tag);
}

bool TagReader::ReadSound(Tag& tag) {
  tag.attributes.clear();
  tag.mends.clear();
  tag.isEmpty = tag.isBroken = tag.isCut = false;
  tag.isUnusual = false;
  for (std::size_t i = tag.name.begin; i < tag.name.end; ++i) {
    tag.isUnusual = tag.isUnusual || Is(m_bytes[i], kUnusualByte);
  }
  std::size_t at = tag.name.end;
  while (true) {
    const std::size_t behindBlanks = SkipBlanks(m_bytes, at);
    const char next = At(behindBlanks);
    if (EndsTag(behindBlanks)) {
      tag.isEmpty = next == '/';
      tag.span.end = static_cast<std::uint32_t>(behindBlanks + (tag.isEmpty ? 2 : 1));
      return true;
    }
    if (behindBlanks == at || !Is(next, kNameStartByte)) return false;
    at = behindBlanks;
    if (!TakeSoundAttribute(at, tag)) return false;
  }
}

bool TagReader::TakeSoundAttribute(std::size_t& at, Tag& tag) {
  TagAttribute attribute;
  const std::string_view bytes = m_bytes;
  const std::size_t nameBegin = at;
  std::uint8_t inName = 0;
  for (; at < bytes.size() && Is(bytes[at], kNameByte); ++at) inName |= ClassesOf(bytes[at]);
  attribute.name = {nameBegin, at};
  const std::string_view name = attribute.name.In(bytes);
  const bool isUnusual = (inName & kUnusualByte) != 0;
  if (isUnusual && !IsQualifiedName(name)) return false;
  tag.isUnusual = tag.isUnusual || isUnusual || name == kNamespaceName;
  at = SkipBlanks(m_bytes, at);
  if (At(at) != '=') return false;
  at = SkipBlanks(m_bytes, at + 1);
  const char quote = At(at);
  if (!IsQuote(quote)) return false;
  attribute.quote = quote;
  const std::size_t begin = ++at;
  std::uint8_t inValue = 0;
  for (; at < bytes.size() && bytes[at] != quote && bytes[at] != '<'; ++at) {
    inValue |= ClassesOf(bytes[at]);
  }
  if (at == bytes.size() || bytes[at] == '<') return false;
  attribute.seen = inValue;
  attribute.value = {begin, at++};
  attribute.end = static_cast<std::uint32_t>(at);
  tag.attributes.push_back(attribute);
  return true;
}

void TagReader::ReadBroken(Tag& tag) {
  tag.attributes.clear();
  const std::size_t limit = LimitOf(tag.span.begin);
  std::size_t at = tag.name.end;
  while (true) {
    const std::size_t behindBlanks = std::min(SkipBlanks(m_bytes, at), limit);
    if (behindBlanks == limit || At(behindBlanks) == '<') return EndWithoutMark(behindBlanks, tag);
    if (EndsTag(behindBlanks)) {
      tag.isEmpty = At(behindBlanks) == '/';
      tag.span.end = static_cast<std::uint32_t>(behindBlanks + (tag.isEmpty ? 2 : 1));
      break;
    }
    const bool isAttached = behindBlanks == at;
    at = behindBlanks;
    if (!Is(At(at), kNameStartByte)) {
      at = TakeJunk(at, tag);
      continue;
    }
    const std::size_t count = tag.attributes.size();
    const std::size_t begin = at;
    at = TakeAttribute(at, tag);
    if (isAttached && tag.attributes.size() > count) Mend(tag, {{begin, begin}, " "});
  }
  tag.isBroken = !tag.mends.empty();
}

std::size_t TagReader::TakeAttribute(std::size_t at, Tag& tag) {
  TagAttribute attribute;
  attribute.name = {at, NameEnd(at)};
  const std::size_t equals = SkipBlanks(m_bytes, attribute.name.end);
  const std::size_t limit = LimitOf(tag.span.begin);
  const std::string_view name = attribute.name.In(m_bytes);
  if (At(equals) != '=' || equals >= limit || !IsQualifiedName(name)) return TakeJunk(at, tag);
  tag.isUnusual =
      tag.isUnusual || name == kNamespaceName ||
      std::any_of(name.begin(), name.end(), [](char byte) { return Is(byte, kUnusualByte); });
  const std::size_t value = std::min(SkipBlanks(m_bytes, equals + 1), limit);
  const bool isQuoted = value < limit && IsQuote(At(value));
  const std::size_t end = isQuoted ? TakeQuoted(value, attribute, tag)
                                   : TakeUnquoted(equals + 1, value, attribute, tag);
  attribute.end = static_cast<std::uint32_t>(end);
  LookAtValue(m_bytes, attribute);
  tag.attributes.push_back(attribute);
  return end;
}

std::size_t TagReader::TakeQuoted(std::size_t at, TagAttribute& attribute, Tag& tag) {
  const std::size_t limit = LimitOf(tag.span.begin);
  const std::size_t begin = at + 1;
  attribute.quote = At(at);
  std::size_t end = ClosingQuote(attribute.quote, begin);
  if (end >= limit) end = ClosingOf(attribute.quote).any.From(begin);
  if (end < limit) {
    attribute.value = {begin, end};
    return end + 1;
  }
  // Nothing closes it: it ends with the tag.
  end = std::min(m_tagEnds.From(begin), limit);
  if (end < limit && end > begin && At(end - 1) == '/') --end;
  end = TrimmedEnd(begin, end);
  attribute.value = {begin, end};
  Mend(tag, {{end, end}, std::string(1, attribute.quote)});
  return end;
}

std::size_t TagReader::TakeUnquoted(std::size_t behindEquals, std::size_t at,
                                    TagAttribute& attribute, Tag& tag) {
  const std::size_t limit = LimitOf(tag.span.begin);
  std::size_t end = at;
  while (end < limit && !Is(At(end), kBlankByte) && At(end) != '<' && !EndsTag(end)) ++end;
  // Behind a blank it may be the next attribute.
  const bool isNext =
      at > behindEquals && Span(at, end).In(m_bytes).find('=') != std::string_view::npos;
  if (isNext || end == at) {
    attribute.value = {behindEquals, behindEquals};
    Mend(tag, {attribute.value, "\"\""});
    return behindEquals;
  }
  attribute.value = {at, end};
  Mend(tag, {{at, at}, "\""});
  Mend(tag, {{end, end}, "\""});
  return end;
}

std::size_t TagReader::TakeJunk(std::size_t at, Tag& tag) const {
  std::size_t end = at + 1;
  while (end < m_limit && !Is(At(end), kBlankByte) && At(end) != '<' && !EndsTag(end)) ++end;
  Mend(tag, {{at, end}, ""});
  return end;
}

void TagReader::EndWithoutMark(std::size_t at, Tag& tag) const {
  tag.isBroken = true;
  if (at == m_bytes.size()) {
    tag.isCut = true;
    tag.span.end = static_cast<std::uint32_t>(at);
    return;
  }
  const std::size_t end = TrimmedEnd(tag.name.end, at);
  tag.isEmpty = true;
  tag.span.end = static_cast<std::uint32_t>(end);
  Mend(tag, {{end, end}, "/>"});
}

std::size_t TagReader::ClosingQuote(char quote, std::size_t from) {
  Closing& closing = ClosingOf(quote);
  if (closing.isKnown && closing.from <= from && from <= closing.found) return closing.found;
  std::size_t place = closing.any.From(from);
  while (place < m_bytes.size() && !ClosesValue(place)) place = closing.any.From(place + 1);
  closing.isKnown = true;
  closing.from = from;
  closing.found = place;
  return place;
}

bool TagReader::ClosesValue(std::size_t quote) const {
  std::size_t at = SkipBlanks(m_bytes, quote + 1);
  if (EndsTag(at)) return true;
  if (!Is(At(at), kNameStartByte)) return false;
  at = SkipBlanks(m_bytes, NameEnd(at));
  return At(at) == '=' && IsQuote(At(SkipBlanks(m_bytes, at + 1)));
}

bool TagReader::EndsTag(std::size_t at) const {
  return At(at) == '>' || (At(at) == '/' && At(at + 1) == '>');
}

std::size_t TagReader::NameEnd(std::size_t at) const {
  while (Is(At(at), kNameByte)) ++at;
  return at;
}

std::size_t TagReader::TrimmedEnd(std::size_t begin, std::size_t end) const {
  while (end > begin && Is(m_bytes[end - 1], kBlankByte)) --end;
  return end;
}

std::size_t TagReader::LimitOf(std::size_t begin) {
  if (m_limitFrom <= begin && begin < m_limit) return m_limit;
  m_limitFrom = begin;
  std::size_t line = m_bytes.find('\n', begin);
  while (line != std::string_view::npos) {
    const std::size_t next = SkipBlanks(m_bytes, line);
    if (next == m_bytes.size() || m_bytes[next] == '<') return m_limit = line;
    line = m_bytes.find('\n', next);
  }
  return m_limit = m_bytes.size();
}

void TagReader::LookAtValue(std::string_view bytes, TagAttribute& attribute) {
  for (const char byte : attribute.value.In(bytes)) {
    attribute.seen |= ClassesOf(byte);
    attribute.hasQuote = attribute.hasQuote || byte == attribute.quote;
  }
}

}  // namespace zortunedex::kit::markup

#include "kit/xml/raw/tag_choice.h"

#include <algorithm>
#include <iterator>
#include <numeric>

#include "kit/xml/text/characters.h"
#include "kit/xml/tokens/declaration.h"

namespace zortunedex::kit::markup {
namespace {

/// A value may hold line breaks, but not without end.
constexpr int kMostLines = 4;

/// Takes an empty element with the attributes of the table from the front of the text, as saving in
/// the plain form writes it. False where none stands there.
bool TakePlain(std::string_view& text, std::string_view element, RawTable table) {
  const auto take = [&text](std::string_view part) {
    if (!text.starts_with(part)) return false;
    text.remove_prefix(part.size());
    return true;
  };
  if (!take("<") || !take(element)) return false;
  for (const RawAttribute& row : table) {
    if (!take(" ") || !take(row.name) || !take("=\"")) return false;
    text.remove_prefix(std::min(text.find_first_of("\"<"), text.size()));
    if (!take("\"")) return false;
  }
  return take("/>");
}

}  // namespace

bool IsPreFormatted(std::string_view bytes) {
  const std::size_t end = bytes.find("?>");
  if (!bytes.starts_with("<?xml") || end == std::string_view::npos) return false;
  const std::string_view declaration = bytes.substr(0, end + 2);
  const bool isDeclaration = Is(bytes[5], kBlankByte) || end == 5;
  return isDeclaration && bytes.substr(end + 2).starts_with("\r\n") &&
         (declaration == kSoundDeclaration || !ReadDeclaration(declaration).isSound);
}

TagChoice::TagChoice(std::string_view bytes, GoodTags goodTags)
    : m_bytes(bytes), m_isPreFormatted(IsPreFormatted(bytes)), m_goodTags(goodTags) {}

TagChoice::Way TagChoice::Choose(Tag& tag, RawTable table) {
  m_repeated.clear();
  // Whatever is written in this form is a line of its own.
  const bool mayBeLine = m_isPreFormatted && BeginsLine(tag.span.begin);
  const bool isWhole = !mayBeLine || EndsLine(EndOfRow(tag, table));
  if (!tag.isGuessed && isWhole && FollowsTable(tag, table)) return Way::AsRead;
  FindRepeated(tag);
  const bool isSound = !tag.isGuessed && m_repeated.empty();
  const bool mayBeRaw = !table.empty() && !tag.attributes.empty() &&
                        tag.attributes[0].name.In(m_bytes) == table[0].name &&
                        BeginsLine(tag.span.begin);
  if (!mayBeRaw || (isSound && !m_isPreFormatted)) return Way::AsRead;
  // What is good XML as it stands is not doubted for what the next element could complete.
  const std::size_t end = Search(tag, table, isSound);
  if (m_split.solutions == 0) return Way::AsRead;
  if (isSound && (isWhole || m_goodTags == GoodTags::Stay)) return Way::Doubtful;
  TakeRaw(tag, end, table);
  m_repeated.clear();
  if (m_split.solutions > 1) return Way::Ambiguous;
  return isSound ? Way::RawEnd : Way::Raw;
}

bool TagChoice::FollowsTable(const Tag& tag, RawTable table) const {
  return tag.attributes.size() == table.size() &&
         std::equal(table.begin(), table.end(), tag.attributes.begin(),
                    [this](const RawAttribute& row, const TagAttribute& attribute) {
                      return attribute.name.In(m_bytes) == row.name;
                    });
}

bool TagChoice::BeginsLine(std::size_t place) const {
  while (place > 0 && m_bytes[place - 1] == '\t') --place;
  return place == 0 || m_bytes[place - 1] == '\n';
}

/// Behind the elements that follow the tag directly: saving in the plain form puts a new one behind
/// the last one of its kind, without a line break.
std::size_t TagChoice::EndOfRow(const Tag& tag, RawTable table) const {
  std::string_view text = m_bytes.substr(tag.span.end);
  std::string_view rest = text;
  while (!table.empty() && TakePlain(rest, tag.name.In(m_bytes), table)) text = rest;
  return m_bytes.size() - text.size();
}

bool TagChoice::EndsLine(std::size_t place) const {
  place = m_bytes.find_first_not_of(" \t\r", place);
  if (place == std::string_view::npos) return true;
  return m_bytes[place] == '\n' && IsLineOfElement(place + 1);
}

/// The line begins with a tag; or the file ends in front of it.
bool TagChoice::IsLineOfElement(std::size_t begin) const {
  const std::size_t place = m_bytes.find_first_not_of('\t', begin);
  return place == std::string_view::npos || m_bytes[place] == '<';
}

/// The line begins with an element of the channel file, as its form has them, or with an end tag or
/// a comment.
bool TagChoice::BeginsElement(std::size_t begin) const {
  constexpr std::string_view kBeginnings[] = {
      "</", "<!--", "<Channel", "<Country", "<ElementStreams", "<SatelliteParams", "<Components"};
  const std::size_t place = std::min(m_bytes.find_first_not_of('\t', begin), m_bytes.size());
  const std::string_view line = m_bytes.substr(place);
  return std::any_of(std::begin(kBeginnings), std::end(kBeginnings),
                     [line](std::string_view one) { return line.starts_with(one); });
}

/// Splits the text up to the end of its line; where it does not split, up to that of one of the
/// next lines. Answers where the element ends.
std::size_t TagChoice::Search(const Tag& tag, RawTable table, bool endsAtElements) {
  m_split = {};
  const std::size_t begin = tag.span.begin;
  std::size_t line = begin;
  for (int count = 0; count < kMostLines && line < m_bytes.size(); ++count) {
    const std::size_t lineEnd = std::min(m_bytes.find('\n', line), m_bytes.size());
    line = lineEnd + 1;
    if (!IsLineOfElement(line)) continue;
    std::size_t end = lineEnd;
    while (end > begin && Is(m_bytes[end - 1], kBlankByte)) --end;
    m_split = SplitRaw(Span(begin, end).In(m_bytes), tag.name.In(m_bytes), table);
    if (m_split.solutions > 0) return end;
    if (endsAtElements && BeginsElement(line)) break;
  }
  return begin;
}

void TagChoice::TakeRaw(Tag& tag, std::size_t end, RawTable table) const {
  tag.attributes.clear();
  tag.mends.clear();
  tag.isBroken = tag.isCut = tag.isUnusual = false;
  tag.isEmpty = m_bytes[end - 2] == '/';
  const std::size_t begin = tag.span.begin;
  tag.span.end = static_cast<std::uint32_t>(end);
  for (std::size_t i = 0; i < table.size(); ++i) {
    const Span value = m_split.values[i];
    TagAttribute attribute;
    attribute.value = {begin + value.begin, begin + value.end};
    // Name, equals sign, quotation mark.
    const std::size_t nameEnd = attribute.value.begin - std::size_t{2};
    attribute.name = {nameEnd - table[i].name.size(), nameEnd};
    attribute.end = attribute.value.end + 1;
    TagReader::LookAtValue(m_bytes, attribute);
    tag.attributes.push_back(attribute);
  }
}

void TagChoice::FindRepeated(const Tag& tag) {
  const std::size_t count = tag.attributes.size();
  const auto nameOf = [&](std::size_t i) { return tag.attributes[i].name.In(m_bytes); };
  m_order.resize(count);
  std::iota(m_order.begin(), m_order.end(), std::size_t{0});
  std::sort(m_order.begin(), m_order.end(), [&](std::size_t a, std::size_t b) {
    const int order = nameOf(a).compare(nameOf(b));
    return order != 0 ? order < 0 : a < b;
  });
  for (std::size_t i = 1; i < count; ++i) {
    if (nameOf(m_order[i - 1]) != nameOf(m_order[i])) continue;
    m_repeated.resize(count);
    m_repeated[m_order[i]] = true;
  }
}

}  // namespace zortunedex::kit::markup

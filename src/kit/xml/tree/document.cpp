#include "kit/xml/tree/document.h"

#include <algorithm>
#include <utility>

#include "kit/xml/raw/tag_choice.h"
#include "kit/xml/tokens/encoding.h"
#include "kit/xml/tree/builder.h"

namespace zortunedex::kit::markup {

Document Document::Read(std::string bytes, const ReadOptions& options) {
  const auto held = std::make_shared<const std::string>(std::move(bytes));
  Document document(held);
  if (held->size() > kLargestFile) {
    document.m_damages.emplace_back().reason = Reason::TooLong;
    return document;
  }
  document.m_encoding = ForeignEncoding(*held);
  if (!document.m_encoding.empty()) {
    document.TakeEncoding(options.tokens);
    return document;
  }
  const CharacterRuns characters(*held, options.decode);
  document.m_isReadable = Builder(document, characters, options.tokens, Builder::Way::Xml).Run();
  if (document.m_isReadable) return document;
  // What a parser does not take nobody has read yet: raw markup may be what was meant.
  if (options.tokens != nullptr) options.tokens->clear();
  document = Document(held);
  Builder(document, characters, options.tokens, Builder::Way::Mending).Run();
  document.AddDoubtsOnceMended();
  return document;
}

void Document::TakeEncoding(std::vector<Token>* tokens) {
  m_isReadable = true;  // for all that can be told
  const Span whole(0, Bytes().size());
  Damage& damage = m_damages.emplace_back();
  damage.reason = Reason::OtherEncoding;
  damage.span = whole;
  if (tokens != nullptr) tokens->push_back({TokenKind::Damaged, whole});
}

/// Whether each element's tag is good XML and raw markup just as well.
std::vector<bool> Document::Doubts() const {
  std::vector<bool> doubts(m_elements.size());
  for (const Damage& damage : m_damages) {
    if (damage.reason != Reason::ReadsTwoWays) continue;
    const auto found =
        std::ranges::lower_bound(m_elements, damage.span.begin, {},
                                 [](const Element& element) { return element.tag.begin; });
    doubts[static_cast<std::size_t>(found - m_elements.begin())] = true;
  }
  return doubts;
}

/// A mended tag may come to look like raw markup, which nobody can tell before the mends are made.
void Document::AddDoubtsOnceMended() {
  const bool isAllMended = std::ranges::all_of(m_damages, [](const Damage& damage) {
    return damage.isMended || !IsBeyondReading(damage.reason);
  });
  if (!isAllMended) return;
  Document mended(std::make_shared<const std::string>(Mends().Apply(Bytes()).value_or("")));
  if (!IsPreFormatted(mended.Bytes())) return;
  const CharacterRuns characters(mended.Bytes(), {});
  const bool isRead = Builder(mended, characters, nullptr, Builder::Way::Xml).Run();
  if (!isRead || mended.m_elements.size() != m_elements.size()) return;
  const std::vector<bool> before = Doubts();
  const std::vector<bool> after = mended.Doubts();
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (!after[i] || before[i]) continue;
    Damage& damage = m_damages.emplace_back();
    damage.reason = Reason::ReadsTwoWays;
    damage.span = m_elements[i].tag;
  }
  std::ranges::stable_sort(m_damages, {}, [](const Damage& damage) { return damage.span.begin; });
}

const Attribute* Document::Find(const Element& element, std::string_view attribute) const {
  for (const Attribute& candidate : AttributesOf(element)) {
    if (NameOf(candidate) == attribute) return &candidate;
  }
  return nullptr;
}

std::optional<std::string_view> Document::ValueOf(const Element& element,
                                                  std::string_view attribute) const {
  const Attribute* const found = Find(element, attribute);
  return found == nullptr ? std::nullopt : std::optional(ValueOf(*found));
}

std::span<const Edit> Document::MendsOf(const Damage& damage) const {
  return std::span(m_mends).subspan(damage.firstMend, damage.mendCount);
}

Edits Document::Mends() const {
  Edits edits;
  for (const Edit& mend : m_mends) edits.Add(mend);
  return edits;
}

Place Document::PlaceOf(std::size_t offset) const {
  if (!m_places) m_places = std::make_unique<Places>(Bytes());
  return m_places->Of(offset);
}

}  // namespace zortunedex::kit::markup

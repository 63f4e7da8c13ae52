#include "kit/xml/tree/document.h"

#include <algorithm>
#include <utility>

#include "kit/xml/tokens/encoding.h"
#include "kit/xml/tree/builder.h"

namespace markup {

Document Document::Read(std::string bytes, const ReadOptions& options) {
  Document document;
  document.m_bytes = std::make_shared<const std::string>(std::move(bytes));
  if (document.Bytes().size() > kLargestFile) {
    document.m_damages.emplace_back().reason = Reason::TooLong;
    return document;
  }
  document.m_encoding = ForeignEncoding(document.Bytes());
  if (document.m_encoding.empty()) {
    Builder(document, options, Builder::Way::Whole).Run();
    document.m_isReadable = document.IsWellFormed();
    return document;
  }
  document.m_isReadable = true;  // for all that can be told
  const Span whole(0, document.Bytes().size());
  Damage& damage = document.m_damages.emplace_back();
  damage.reason = Reason::OtherEncoding;
  damage.span = whole;
  if (options.tokens != nullptr) options.tokens->push_back({TokenKind::Damaged, whole});
  return document;
}

std::span<const Attribute> Document::AttributesOf(const Element& element) const {
  return std::span(m_attributes).subspan(element.firstAttribute, element.attributeCount);
}

const Attribute* Document::Find(const Element& element, std::string_view attribute) const {
  for (const Attribute& candidate : AttributesOf(element)) {
    if (NameOf(candidate) == attribute) return &candidate;
  }
  return nullptr;
}

std::string_view Document::ValueOf(const Attribute& attribute) const {
  return attribute.text == kNone ? Text(attribute.value) : m_texts[attribute.text];
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

bool Document::IsWellFormed() const {
  bool hasRawMarkup = false;
  for (const Damage& damage : m_damages) {
    if (IsBeyondReading(damage.reason)) return false;
    hasRawMarkup = hasRawMarkup || damage.reason != Reason::RawBlank;
  }
  if (!hasRawMarkup) return true;
  // What was taken for a value has to be judged as XML.
  Document other;
  other.m_bytes = m_bytes;
  Builder(other, {}, Builder::Way::XmlAlone).Run();
  return std::none_of(other.m_damages.begin(), other.m_damages.end(),
                      [](const Damage& damage) { return IsBeyondReading(damage.reason); });
}

Place Document::PlaceOf(std::size_t offset) const {
  if (!m_places) m_places = std::make_unique<Places>(Bytes());
  return m_places->Of(offset);
}

}  // namespace markup

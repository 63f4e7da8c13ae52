// Looking up names that mostly come in the order in which the library writes them: what follows the
// last one found is tried first.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "core/station_blocks.h"
#include "kit/xml/tree/document.h"

namespace check {

/// The values of one element.
class AttributeLookup {
 public:
  AttributeLookup(const markup::Document& document, const markup::Element& element)
      : m_document(document), m_attributes(document.AttributesOf(element)) {}

  /// Of an attribute with that name: which one of two that an unmended element has is not told.
  std::optional<std::string_view> ValueOf(std::string_view name) {
    for (std::size_t i = 0; i < m_attributes.size(); ++i) {
      const std::size_t place = (m_next + i) % m_attributes.size();
      if (m_document.NameOf(m_attributes[place]) != name) continue;
      m_next = place + 1;
      return m_document.ValueOf(m_attributes[place]);
    }
    return std::nullopt;
  }

 private:
  const markup::Document& m_document;
  std::span<const markup::Attribute> m_attributes;
  std::size_t m_next = 0;
};

/// The rows of attributes.
class FieldLookup {
 public:
  explicit FieldLookup(station_blocks::Rows<station_blocks::Field> rows)
      : m_rows(rows), m_next(rows.begin()) {}

  /// Null for an attribute without a row.
  const station_blocks::Field* Find(std::string_view attribute) {
    const bool isNext = m_next != m_rows.end() && attribute == m_next->attribute;
    const station_blocks::Field* found =
        isNext ? m_next : station_blocks::FindField(m_rows, attribute);
    if (found != nullptr) m_next = found + 1;
    return found;
  }

 private:
  station_blocks::Rows<station_blocks::Field> m_rows;
  const station_blocks::Field* m_next;
};

}  // namespace check

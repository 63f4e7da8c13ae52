// Looking up names that mostly come in the order in which the library writes them: what follows the
// last one found is tried first.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "core/station_blocks.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

/// Whether a name is one of a table's. These are short, and most that are compared differ in their
/// first letters.
constexpr bool IsCalled(std::string_view name, const char* known) {
  for (const char c : name) {
    if (*known == '\0' || c != *known) return false;
    ++known;
  }
  return *known == '\0';
}

/// The values of one element.
class AttributeLookup {
 public:
  AttributeLookup(const markup::Document& document, const markup::Element& element)
      : m_document(document), m_attributes(document.AttributesOf(element)) {}

  /// Of an attribute with that name: which one of two that an unmended element has is not told.
  std::optional<std::string_view> ValueOf(const char* name) {
    const std::size_t count = m_attributes.size();
    std::size_t place = Find(name, m_next, count);
    if (place == count) {
      place = Find(name, 0, m_next);
      if (place == m_next) return std::nullopt;
    }
    m_next = place + 1;
    return m_document.ValueOf(m_attributes[place]);
  }

 private:
  /// The place of that name from one place up to another; the latter for none.
  std::size_t Find(const char* name, std::size_t from, std::size_t to) const {
    while (from < to && !IsCalled(m_document.NameOf(m_attributes[from]), name)) ++from;
    return from;
  }

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
    const bool isNext = m_next != m_rows.end() && IsCalled(attribute, m_next->attribute);
    const station_blocks::Field* found =
        isNext ? m_next : station_blocks::FindField(m_rows, attribute);
    if (found != nullptr) m_next = found + 1;
    return found;
  }

 private:
  station_blocks::Rows<station_blocks::Field> m_rows;
  const station_blocks::Field* m_next;
};

}  // namespace zortunedex::kit::check

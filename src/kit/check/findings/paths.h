#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

/// Says where an element stands: "Country[49]/ChannelSet[64]/Channel[index=5]". Elements are told
/// apart by their key, and where they have none by their number among those of the same name.
class Paths {
 public:
  /// The document has to stay.
  explicit Paths(const markup::Document& document) : m_document(document) {}

  /// Of one of its elements.
  std::string Of(markup::Index element);

 private:
  std::string Step(const markup::Element& element, markup::Index index);
  void CountSiblings();

  const markup::Document& m_document;
  /// From 1; 0 for an only one. Filled at the first question.
  std::vector<std::uint32_t> m_numbers;
};

}  // namespace zortunedex::kit::check

#pragma once

#include <string_view>

#include "platform/text.h"
#include "xml/elements/xml_nodes.h"

namespace xml {

/// Reads the text attributes of one element one after the other. A missing attribute takes the text
/// of the one read before it, the first the empty text: files rely on it, and it is kept.
class CarryText {
 public:
  explicit CarryText(const dom::Element& element) : m_element(element) {}

  /// In the system's ANSI code page, cut to 259 bytes on a character boundary. Valid until the next
  /// call.
  std::string_view Narrow(const char* name) {
    GetAttrText(m_element, name, m_buffer);
    return m_buffer;
  }
  /// The same as a text of its own, through the thread's ANSI code page.
  Bstr Wide(const char* name) { return text::FromNarrow(Narrow(name)); }

 private:
  const dom::Element& m_element;
  TextBuffer m_buffer = {};
};

}  // namespace xml

#pragma once

#include <exception>

#include "platform/dom.h"

namespace xml {

/// What the indexes of one parent's elements share. While records are saved an index hands out one
/// element after the other, and the codec fills each before the next is asked for: what it made of
/// an element is only known then. An index that is left by an exception takes the last element away
/// again if it is a new one: half a record in the document would be saved as one the next time.
class ElementIndex {
 public:
  ElementIndex(const ElementIndex&) = delete;
  ElementIndex& operator=(const ElementIndex&) = delete;

 protected:
  explicit ElementIndex(const dom::Element& parent) : m_parent(parent) {}
  ~ElementIndex() {
    if (std::uncaught_exceptions() > m_exceptions && m_last && m_isNew)
      m_parent.RemoveChild(m_last);
  }

  const dom::Element& Parent() const { return m_parent; }

  void HandOut(const dom::Element& element, bool isNew, dom::Element& out) {
    m_isNew = isNew;
    out = m_last = element;
  }
  /// Calls `note(element, isNew)` for the element that was handed out last, once.
  template <typename Note>
  void Settle(Note note) {
    if (!m_last) return;
    note(m_last, m_isNew);
    m_last = dom::Element();
  }

 private:
  const int m_exceptions = std::uncaught_exceptions();
  dom::Element m_parent;
  dom::Element m_last;
  bool m_isNew = false;
};

}  // namespace xml

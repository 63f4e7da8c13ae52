#include "kit/xml/tree/element_tree.h"

#include <utility>

namespace zortunedex::kit::markup {

ElementTree::ElementTree(std::string_view bytes, std::vector<Element>& elements,
                         std::vector<Leaf>& leaves, DamageList& damages)
    : m_bytes(bytes), m_elements(elements), m_leaves(leaves), m_damages(damages) {}

Index ElementTree::Add(const Element& element, bool isEmpty) {
  const auto added = static_cast<Index>(m_elements.size());
  m_elements.push_back(element);
  if (!m_open.empty()) {
    Open& parent = m_open.back();
    m_elements.back().parent = parent.element;
    Index& link = parent.lastChild == kNone ? m_elements[parent.element].firstChild
                                            : m_elements[parent.lastChild].next;
    link = added;
    parent.lastChild = added;
  }
  if (isEmpty) {
    m_elements.back().endTag = {element.tag.end, element.tag.end};
  } else {
    m_open.push_back({added, kNone});
  }
  return added;
}

std::size_t ElementTree::Close(std::string_view name, Span endTag) {
  std::size_t depth = m_open.size();
  while (depth > 0 && NameOf(m_open[depth - 1].element) != name) --depth;
  if (depth == 0) return 0;
  const std::size_t count = m_open.size() - depth + 1;
  CloseInner(depth, endTag.begin, true);
  const Open closed = m_open.back();
  m_open.pop_back();
  m_elements[closed.element].endTag = endTag;
  if (m_open.empty()) m_lastOfRoot = closed.lastChild;
  return count;
}

void ElementTree::CloseAll(bool isMended) { CloseInner(0, m_bytes.size(), isMended); }

void ElementTree::ReopenRoot() { m_open.push_back({0, m_lastOfRoot}); }

/// Closes what is open below a depth, in front of a place.
void ElementTree::CloseInner(std::size_t depth, std::size_t place, bool isMended) {
  std::string endTags;
  Span first;
  while (m_open.size() > depth) {
    const Open open = m_open.back();
    m_open.pop_back();
    if (isMended && !m_keepsNesting && EndBeforeChild(open)) continue;
    Element& element = m_elements[open.element];
    element.endTag = {place, place};
    if (endTags.empty()) first = element.tag;
    endTags.append("</").append(NameOf(open.element)).append(">");
  }
  if (isMended && !endTags.empty()) {
    m_damages.Add(Reason::NotClosed, first, {{{place, place}, std::move(endTags)}});
  }
}

/// No element of these files stands in one of its own name: where one seems to, the outer one
/// lacks its end in front of it.
bool ElementTree::EndBeforeChild(Open open) {
  Index before = kNone;
  const Index child = ChildOfSameName(open.element, before);
  if (child == kNone || m_open.empty()) return false;
  Element& element = m_elements[open.element];
  const std::uint32_t place = m_elements[child].tag.begin;
  element.endTag = {place, place};
  m_damages.Add(Reason::NotClosed, element.tag,
                {{element.endTag, "</" + std::string(NameOf(open.element)) + ">"}});
  (before == kNone ? element.firstChild : m_elements[before].next) = kNone;
  MoveToParent(open.element, child, open.lastChild);
  return true;
}

Index ElementTree::ChildOfSameName(Index element, Index& before) {
  // Elements that are left open one in the other would be gone through again and again.
  constexpr std::size_t kStepsForEach = 8;
  const std::size_t mostSteps = kStepsForEach * m_elements.size();
  Index child = m_elements[element].firstChild;
  for (; child != kNone && m_steps < mostSteps; ++m_steps) {
    if (NameOf(child) == NameOf(element)) return child;
    before = child;
    child = m_elements[child].next;
  }
  return kNone;
}

/// Makes siblings of an element out of its children from one on.
void ElementTree::MoveToParent(Index element, Index child, Index lastChild) {
  Open& parent = m_open.back();
  m_elements[element].next = child;
  parent.lastChild = lastChild;
  const std::uint32_t place = m_elements[child].tag.begin;
  for (; child != kNone; child = m_elements[child].next, ++m_steps) {
    m_elements[child].parent = parent.element;
  }
  for (std::size_t i = m_leaves.size(); i > 0 && m_leaves[i - 1].span.begin > place; --i) {
    if (m_leaves[i - 1].parent == element) m_leaves[i - 1].parent = parent.element;
    ++m_steps;
  }
}

}  // namespace zortunedex::kit::markup

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/tree/damage_list.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit::markup {

/// Hangs the elements of a file into a tree. What is left open is closed where that was meant,
/// as far as it can be told.
class ElementTree {
 public:
  /// All stay with the caller.
  ElementTree(std::string_view bytes, std::vector<Element>& elements, std::vector<Leaf>& leaves,
              DamageList& damages);

  std::size_t Depth() const { return m_open.size(); }
  /// The innermost open element; kNone outside of all.
  Index Current() const { return m_open.empty() ? kNone : m_open.back().element; }

  /// Adds an element below the current one. It stays open, unless it is empty.
  Index Add(const Element& element, bool isEmpty);
  /// Closes the innermost open element of that name, and what stands open in it. Answers how many
  /// elements were closed: none for a stray end tag.
  std::size_t Close(std::string_view name, Span endTag);
  /// At the end of the file. `isMended` writes the end tags that lack.
  void CloseAll(bool isMended);
  /// From here on elements stay in those that they stand in, as their namespaces depend on them.
  void KeepNesting() { m_keepsNesting = true; }
  /// Opens the document element again, behind its end.
  void ReopenRoot();

 private:
  struct Open {
    Index element = kNone;
    Index lastChild = kNone;
  };

  void CloseInner(std::size_t depth, std::size_t place, bool isMended);
  bool EndBeforeChild(Open open);
  Index ChildOfSameName(Index element, Index& before);
  void MoveToParent(Index element, Index child, Index lastChild);
  std::string_view NameOf(Index element) const { return m_elements[element].name.In(m_bytes); }

  std::string_view m_bytes;
  std::vector<Element>& m_elements;
  std::vector<Leaf>& m_leaves;
  DamageList& m_damages;
  std::vector<Open> m_open;
  Index m_lastOfRoot = kNone;
  bool m_keepsNesting = false;
  std::size_t m_steps = 0;  ///< taken among children: not more than a few for each element
};

}  // namespace zortunedex::kit::markup

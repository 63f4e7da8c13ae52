#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "core/interfaces.h"
#include "platform/dom.h"
#include "xml/lookup/element_index.h"

namespace xml {

/// Finds or makes the SAT elements of one dish while its assignments are saved: the same elements
/// as selecting "./SAT[@id='...'][@band='...'][@LNB_Low='n'][@LNB_High='n'][@LNB_Switch='n']" for
/// each would give, from one pass over the dish. While it lives, only the codec changes the dish.
class DishSatIndex : private ElementIndex {
 public:
  explicit DishSatIndex(const dom::Element& dish) : ElementIndex(dish) {}

  /// The first element with the assignment's five values; where there is none a new, empty one at
  /// the dish's end. An assignment whose path is longer than 259 bytes or whose texts hold an
  /// apostrophe matches nothing and gets a new element every time.
  HRESULT FindOrCreate(IDishSatInfo* dishSat, dom::Element& sat);

 private:
  /// What identifies an element; none when one of its five attributes is missing.
  static std::optional<std::string> KeyOf(const dom::Element& sat);
  void Build();
  /// Takes note of what the codec made of an element.
  void NoteWritten(const dom::Element& sat, bool isNew);

  bool m_built = false;
  std::unordered_map<std::string, dom::Element> m_first;  // first element of each key
  std::string m_lastKey;  // under which the element that was handed out last was found
};

}  // namespace xml

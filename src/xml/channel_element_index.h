#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>

#include "core/interfaces.h"
#include "platform/dom.h"

namespace xml {

/// Finds or makes the Channel elements of one channel set while a list is saved: the same elements
/// in the same places as selecting "./Channel[@index='n']" and scanning the siblings for every
/// record would give, from one pass over the set. While it lives, only the codec changes the set.
class ChannelElementIndex {
 public:
  explicit ChannelElementIndex(const dom::Element& set);

  /// The first element whose "index" is the record's; where there is none a new, empty one in front
  /// of the first sibling with a greater index, else at the end. A failing GetChannelIndex is
  /// answered as it is.
  HRESULT FindOrCreate(IChannelInfo* channelInfo, dom::Element& channel);

 private:
  void Build();
  void Settle();
  void Place(LONG key, const dom::Element& channel);

  dom::Element m_set;
  // First element in document order for every index that is written in its plain decimal form.
  std::unordered_map<LONG, dom::Element> m_byIndex;
  // The elements whose index is greater than every one before them: the first sibling with an index
  // above n is the first of these with one, in whatever order the file keeps its channels.
  std::map<LONG, dom::Element> m_maxima;
  // The element that was handed out last, and the index it was asked for: the codec writes it after
  // that.
  dom::Element m_last;
  LONG m_lastKey = 0;
  bool m_lastCreated = false;
};

}  // namespace xml

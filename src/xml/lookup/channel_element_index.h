#pragma once

#include <map>

#include "core/interfaces.h"
#include "platform/dom.h"
#include "xml/lookup/element_index.h"

namespace xml {

/// Finds or makes the Channel elements of one channel set while a list is saved: the same elements
/// in the same places as selecting "./Channel[@index='n']" and scanning the siblings for every
/// record would give, from one pass over the set. While it lives, only the codec changes the set.
class ChannelElementIndex : private ElementIndex {
 public:
  explicit ChannelElementIndex(const dom::Element& set);

  /// The first element whose "index" is the record's; where there is none a new, empty one in front
  /// of the first sibling with a greater index, else at the end. A failing GetChannelIndex is
  /// answered as it is.
  HRESULT FindOrCreate(IChannelInfo* channelInfo, dom::Element& channel);

 private:
  struct Entry {
    dom::Element element;
    bool plain = false;  // its index is written in the plain decimal form that a lookup matches
  };
  using Entries = std::map<LONG, Entry>;

  void Build();
  /// As every index is while a list is saved for the first time, in its order.
  bool IsAboveAll(LONG key) const { return m_maxima.empty() || m_maxima.rbegin()->first < key; }
  /// Takes note of what the codec made of an element.
  void NoteWritten(const dom::Element& channel, bool isNew);
  void Note(LONG key, Entry entry);
  HRESULT Create(LONG key, dom::Element& channel);

  HRESULT m_built = S_OK;  // a set that could not be read must not get its channels twice
  // The elements whose index is greater than every one before them. Whatever the order of the file,
  // the first sibling with an index above n is the first of these with one.
  Entries m_maxima;
  // The first element of every other index that is written in its plain form.
  std::map<LONG, dom::Element> m_others;
  LONG m_lastKey = 0;
};

}  // namespace xml

// A ChannelSet element of an own document, for tests.
#pragma once

#include <string>
#include <vector>

#include "platform/dom.h"
#include "support/expect.h"

class ChannelSet {
 public:
  ChannelSet() {
    ExpectHr(S_OK, m_document.Create());
    ExpectHr(S_OK, m_document.CreateElement("ChannelSet", m_set));
    ExpectHr(S_OK, m_document.AppendChild(m_set));
  }

  const dom::Element& Get() const { return m_set; }
  IUnknown* Node() const { return m_set.Get(); }

  /// A channel with an index and, where the type has one, a frequency.
  dom::Element Add(LONG index, LONG frequency = 0) {
    const dom::Element channel = AddOther("Channel");
    ExpectHr(S_OK, channel.SetInt("index", index));
    ExpectHr(S_OK, channel.SetInt("freq", frequency));
    return channel;
  }
  dom::Element AddOther(const char* name) {
    dom::Element element;
    ExpectHr(S_OK, m_document.CreateElement(name, element));
    ExpectHr(S_OK, m_set.AppendChild(element));
    return element;
  }

  LONG Count(const char* path = "./Channel") const {
    dom::ElementList list;
    ExpectHr(S_OK, m_set.Select(path, list));
    return list.Count();
  }
  /// The index attributes in document order; -7 where it is missing.
  std::vector<LONG> Indexes() const {
    dom::ElementList list;
    ExpectHr(S_OK, m_set.Select("./Channel", list));
    std::vector<LONG> indexes;
    for (LONG i = 0; i < list.Count(); ++i) {
      dom::Element channel;
      ExpectHr(S_OK, list.Item(i, channel));
      std::int32_t index = -7;
      channel.GetInt("index", index);
      indexes.push_back(index);
    }
    return indexes;
  }

 private:
  dom::Document m_document;
  dom::Element m_set;
};

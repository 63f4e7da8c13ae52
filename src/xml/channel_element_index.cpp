#include "xml/channel_element_index.h"

#include <iterator>
#include <string>

#include "platform/text.h"
#include "xml/xml_nodes.h"

namespace xml {
namespace {

struct IndexValue {
  LONG key = 0;  // 0 where the attribute is missing
  bool plain = false;
};

// Not by way of narrow text: it may make other digits look like plain ones.
IndexValue ReadIndex(const dom::Element& channel) {
  std::string value;
  if (channel.GetUtf8("index", value) != S_OK) return {};
  const LONG key = text::ToInt(value);
  return {key, value == std::to_string(key)};
}

}  // namespace

ChannelElementIndex::ChannelElementIndex(const dom::Element& set) : m_set(set) { Build(); }

void ChannelElementIndex::Build() {
  m_maxima.clear();
  m_others.clear();
  dom::ElementList channels;
  m_built = m_set.Select("./Channel", channels);
  for (LONG i = 0; i < channels.Count(); ++i) {
    dom::Element channel;
    if (channels.Item(i, channel) != S_OK) continue;
    const IndexValue index = ReadIndex(channel);
    if (m_maxima.empty() || m_maxima.rbegin()->first < index.key) {
      m_maxima.emplace_hint(m_maxima.end(), index.key, Entry{std::move(channel), index.plain});
    } else if (index.plain) {
      m_others.emplace(index.key, std::move(channel));
    }
  }
}

HRESULT ChannelElementIndex::FindOrCreate(IChannelInfo* channelInfo, dom::Element& channel) {
  Settle();
  if (FAILED(m_built)) return m_built;
  UINT index = 0;
  HRESULT hr = channelInfo->GetChannelIndex(&index);
  if (FAILED(hr)) return hr;
  m_lastKey = static_cast<LONG>(index);
  m_lastCreated = false;
  const auto maximum = m_maxima.find(m_lastKey);
  if (maximum != m_maxima.end() && maximum->second.plain) {
    m_last = maximum->second.element;
  } else if (const auto other = m_others.find(m_lastKey); other != m_others.end()) {
    m_last = other->second;
  } else {
    hr = Create(m_lastKey, m_last);
    m_lastCreated = hr == S_OK;
  }
  if (hr == S_OK) channel = m_last;
  return hr;
}

HRESULT ChannelElementIndex::Create(LONG key, dom::Element& channel) {
  dom::Element created;
  HRESULT hr = CreateElementFor(m_set, "Channel", created);
  if (hr != S_OK) return hr;
  const auto greater = m_maxima.upper_bound(key);
  hr = greater == m_maxima.end() ? m_set.AppendChild(created)
                                 : m_set.InsertBefore(created, greater->second.element);
  if (hr == S_OK) channel = std::move(created);
  return hr;
}

void ChannelElementIndex::TakeBack() {
  if (m_last && m_lastCreated) m_set.RemoveChild(m_last);
  m_last = dom::Element();
}

void ChannelElementIndex::Settle() {
  if (!m_last) return;
  const IndexValue index = ReadIndex(m_last);
  const bool missing = !index.plain && index.key == 0;
  if (m_lastCreated && missing) {
    // The codec stopped before the index; the element counts as 0 where it stands.
    Note(0, {m_last, false});
  } else if (index.key != m_lastKey || !index.plain) {
    // A record that answers another index each time it is asked.
    Build();
  } else if (m_lastCreated) {
    Note(index.key, {m_last, true});
  }
  m_last = dom::Element();
}

// The element stands right before the first maximum above m_lastKey.
void ChannelElementIndex::Note(LONG key, Entry entry) {
  const auto greater = m_maxima.upper_bound(m_lastKey);
  const bool isMaximum = greater == m_maxima.begin() || std::prev(greater)->first < key;
  if (isMaximum) {
    // Later ones are no longer greater than everything before them, but still found by their index.
    const auto end = m_maxima.upper_bound(key);
    for (auto i = greater; i != end; ++i) {
      if (i->second.plain) m_others.insert_or_assign(i->first, std::move(i->second.element));
    }
    m_maxima.erase(greater, end);
    m_maxima.insert_or_assign(key, std::move(entry));
  } else if (entry.plain) {
    m_others.emplace(key, std::move(entry.element));
  }
}

}  // namespace xml

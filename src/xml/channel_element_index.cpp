#include "xml/channel_element_index.h"

#include <charconv>
#include <iterator>
#include <string_view>

#include "platform/text.h"
#include "xml/xml_nodes.h"

namespace xml {
namespace {

struct IndexValue {
  LONG key = 0;  // 0 where the attribute is missing
  bool plain = false;
};

IndexValue ReadIndex(const dom::Element& channel) {
  char text[24];
  if (channel.GetNarrow("index", text, sizeof(text)) != S_OK) return {};
  char decimal[16];
  const std::string_view value(text);
  // Cut digits would give another number than the whole text.
  LONG key = 0;
  if (value.size() + 1 == sizeof(text)) {
    GetAttrInt(channel, "index", &key);
    return {key, false};
  }
  key = text::ToInt(value);
  const auto end = std::to_chars(std::begin(decimal), std::end(decimal), key).ptr;
  return {key, value == std::string_view(decimal, static_cast<std::size_t>(end - decimal))};
}

}  // namespace

ChannelElementIndex::ChannelElementIndex(const dom::Element& set) : m_set(set) { Build(); }

void ChannelElementIndex::Build() {
  m_maxima.clear();
  m_others.clear();
  dom::ElementList channels;
  m_set.Select("./Channel", channels);
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
    // Later ones that are no longer greater than everything before them.
    m_maxima.erase(greater, m_maxima.upper_bound(key));
    m_maxima.insert_or_assign(key, std::move(entry));
  } else if (entry.plain) {
    m_others.emplace(key, std::move(entry.element));
  }
}

}  // namespace xml

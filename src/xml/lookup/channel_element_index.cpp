#include "xml/lookup/channel_element_index.h"

#include <iterator>
#include <string>

#include "platform/text.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"

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

ChannelElementIndex::ChannelElementIndex(const dom::Element& set) : ElementIndex(set) { Build(); }

void ChannelElementIndex::Build() {
  m_maxima.clear();
  m_others.clear();
  m_built = ForEachChild(Parent(), paths::kChannel, [this](dom::Element channel) {
    const IndexValue index = ReadIndex(channel);
    if (IsAboveAll(index.key)) {
      m_maxima.emplace_hint(m_maxima.end(), index.key, Entry{std::move(channel), index.plain});
    } else if (index.plain) {
      m_others.emplace(index.key, std::move(channel));
    }
  });
}

HRESULT ChannelElementIndex::FindOrCreate(IChannelInfo* channelInfo, dom::Element& channel) {
  Settle([this](const dom::Element& last, bool isNew) { NoteWritten(last, isNew); });
  if (FAILED(m_built)) return m_built;
  UINT index = 0;
  HRESULT hr = channelInfo->GetChannelIndex(&index);
  if (FAILED(hr)) return hr;
  m_lastKey = static_cast<LONG>(index);
  const auto maximum = IsAboveAll(m_lastKey) ? m_maxima.end() : m_maxima.find(m_lastKey);
  if (maximum != m_maxima.end() && maximum->second.plain) {
    HandOut(maximum->second.element, false, channel);
  } else if (const auto other = m_others.find(m_lastKey); other != m_others.end()) {
    HandOut(other->second, false, channel);
  } else {
    dom::Element created;
    hr = Create(m_lastKey, created);
    if (hr == S_OK) HandOut(created, true, channel);
  }
  return hr;
}

HRESULT ChannelElementIndex::Create(LONG key, dom::Element& channel) {
  dom::Element created;
  HRESULT hr = CreateElementFor(Parent(), paths::NameOf(paths::kChannel), created);
  if (hr != S_OK) return hr;
  const auto greater = IsAboveAll(key) ? m_maxima.end() : m_maxima.upper_bound(key);
  hr = greater == m_maxima.end() ? Parent().AppendChild(created)
                                 : Parent().InsertBefore(created, greater->second.element);
  if (hr == S_OK) channel = std::move(created);
  return hr;
}

void ChannelElementIndex::NoteWritten(const dom::Element& channel, bool isNew) {
  const IndexValue index = ReadIndex(channel);
  const bool missing = !index.plain && index.key == 0;
  if (isNew && missing) {
    // The codec stopped before the index; the element counts as 0 where it stands.
    Note(0, {channel, false});
  } else if (index.key != m_lastKey || !index.plain) {
    // A record that answers another index each time it is asked.
    Build();
  } else if (isNew) {
    Note(index.key, {channel, true});
  }
}

// The element stands right before the first maximum above m_lastKey.
void ChannelElementIndex::Note(LONG key, Entry entry) {
  if (key == m_lastKey && IsAboveAll(key)) {
    m_maxima.emplace_hint(m_maxima.end(), key, std::move(entry));
    return;
  }
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

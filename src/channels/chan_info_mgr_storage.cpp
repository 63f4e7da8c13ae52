// Loading the channels from an element and saving them to one.
#include "channels/chan_info_mgr.h"
#include "channels/channel_loading.h"
#include "platform/lack_of_memory.h"
#include "xml/codecs/channel_codec.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"
#include "xml/lookup/channel_element_index.h"

HRESULT STDMETHODCALLTYPE CChanInfoMgr::Load(REFIID riid, IUnknown* pUnknown) {
  const KeepAlive self(this);
  return AnsweringLackOfMemory([=, this] {
    dom::Element set;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, set);
    return FAILED(hr) ? hr : LoadFrom(set);
  });
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::Save(REFIID riid, IUnknown* pUnknown) {
  const KeepAlive self(this);
  return AnsweringLackOfMemory([=, this] {
    dom::Element set;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, set);
    return FAILED(hr) ? hr : SaveTo(set);
  });
}

// All of the channels that can be read, and the element, or nothing.
HRESULT CChanInfoMgr::LoadFrom(const dom::Element& set) {
  Open();
  const PutBack element(m_element);
  if (set.Get() != m_element.Get()) m_element = set;
  constexpr dom::Name kChannel = xml::paths::NameOf(xml::paths::kChannel);
  Loaded loaded;
  HRESULT hr = S_OK;
  const HRESULT visited = set.VisitChildElements([&](const dom::Element& child) {
    if (child.HasTag(kChannel)) hr = LoadOne(child, loaded);
  });
  if (FAILED(visited)) return visited;
  {
    const Locked locked(*this);
    m_channels.AddLoaded(loaded);
  }
  SetDirty(0);
  return hr;
}

HRESULT CChanInfoMgr::LoadOne(const dom::Element& channel, Loaded& loaded) {
  Record record;
  HRESULT hr = LoadChannel(channel, m_signalType, record);
  if (FAILED(hr)) return hr;
  UINT index = 0;
  hr = record->GetChannelIndex(&index);
  if (FAILED(hr)) return hr;
  record->SetDirty(0);
  loaded.push_back({std::move(record), index, index});
  return S_OK;
}

HRESULT CChanInfoMgr::SaveTo(const dom::Element& set) {
  xml::ChannelElementIndex elements(set);
  // Records that were written are not yet in the file.
  const WhenRaised notSaved([this] { SetDirty(1); });
  const HRESULT hr = SaveRecords(elements);
  SetDirty(0);
  return hr;
}

HRESULT CChanInfoMgr::SaveRecords(xml::ChannelElementIndex& elements) {
  HRESULT hr = S_OK;
  for (std::size_t position = 0; position < m_channels.Count(); ++position) {
    const Channels::Held record = m_channels.At(position);
    dom::Element channel;
    hr = elements.FindOrCreate(record.Get(), channel);
    if (hr != S_OK) continue;
    hr = xml::CodeChannel(channel, record.Get(), xml::Direction::Write);
    record->SetDirty(0);
  }
  return hr;
}

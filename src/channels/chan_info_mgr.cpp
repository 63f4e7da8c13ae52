#include "channels/chan_info_mgr.h"

#include "channels/chan_info.h"
#include "channels/sorting/chan_sort.h"
#include "platform/lack_of_memory.h"
#include "xml/files/xml_chan_parser.h"

// Closes the list, in the order of Close. Members are alive until the end: a record that goes may
// still ask for what is left.
CChanInfoMgr::~CChanInfoMgr() {
  m_element = dom::Element();
  m_channels.ReleaseAll();
}

void CChanInfoMgr::TakeOver(CChanInfoMgr& other) {
  m_channels.Swap(other.m_channels);
  if (other.m_element) m_element = std::move(other.m_element);
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::Open() { return S_OK; }

HRESULT STDMETHODCALLTYPE CChanInfoMgr::Close() {
  m_element = dom::Element();
  Clear();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::Clear() {
  const KeepAlive self(this);
  SetDirty(0);
  m_channels.ReleaseAll();
  DropElements();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetSignalType(InputSignalType* pSignalType) {
  if (pSignalType == nullptr) return E_POINTER;
  *pSignalType = m_signalType;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::SetSignalType(InputSignalType SignalType) {
  m_signalType = SignalType;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::CreateChannelInfo(IChannelInfo** ppChanInfo) {
  const HRESULT hr = CChanInfo::CreateInstance(ppChanInfo);
  return FAILED(hr) ? hr : (*ppChanInfo)->SetSignalType(m_signalType);
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::AddChannelInfo(IChannelInfo* pChannelInfo) {
  const Locked locked(*this);
  if (pChannelInfo == nullptr) return E_POINTER;
  return AnsweringLackOfMemory([=, this] {
    const HRESULT hr = m_channels.Add(pChannelInfo);
    return FAILED(hr) ? hr : SetDirty(1);
  });
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::RemoveChannelInfo(IChannelInfo* pChannelInfo) {
  const Locked locked(*this);
  if (pChannelInfo == nullptr) return E_POINTER;
  m_channels.RemoveAndRelease(pChannelInfo);
  NumberChannels(Numbering::FromFront);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetDirty(BOOL* pbDirty) {
  const KeepAlive self(this);
  if (pbDirty == nullptr) return E_POINTER;
  const BOOL own = m_dirty;
  *pbDirty = own != 0 ? own : BOOL{m_channels.HasDirtyRecord()};
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::SetDirty(BOOL bDirty) {
  m_dirty = bDirty;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::MoveChannel(UINT nOldChannelIndex, UINT nNewChannelIndex) {
  const KeepAlive self(this);
  if (nOldChannelIndex == nNewChannelIndex) return E_INVALIDARG;
  Record record;
  HRESULT hr = GetChannelInfoByIndex(nOldChannelIndex, record.Receive());
  if (FAILED(hr)) return hr;
  {
    const Locked locked(*this);
    // Gone when a record removed it while it was asked.
    if (!m_channels.Extract(record.Get())) return E_FAIL;
    NumberChannels(Numbering::FromFront);
  }
  record->SetChannelIndex(nNewChannelIndex);
  hr = AddChannelInfo(record.Get());
  NumberChannels(Numbering::FromFront);
  return hr;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::SortChannel(ESortType SortType, BOOL bAscending) {
  const KeepAlive self(this);
  if (SortType != SortChannelByNo && SortType != SortChannelBySrvType) return E_FAIL;
  const HRESULT hr = AnsweringLackOfMemory([=, this] {
    const Channels::Records before = m_channels.All();
    Channels::Records sorted = before;
    if (SortType == SortChannelByNo) {
      chan_sort::ByNumber(sorted);
    } else {
      chan_sort::ByServiceType(sorted, bAscending);
    }
    m_channels.Replace(before, sorted);
    return S_OK;
  });
  if (FAILED(hr)) return hr;
  // By number the array is ascending either way; descending shows in the numbering alone.
  const bool fromFront = SortType == SortChannelBySrvType || bAscending != 0;
  NumberChannels(fromFront ? Numbering::FromFront : Numbering::FromBack);
  return S_OK;
}

void CChanInfoMgr::NumberChannels(Numbering from) {
  m_channels.Number(from);
  SetDirty(1);
  DropElements();
}

// The elements carry indexes that no longer hold; the next Save writes every channel afresh.
void CChanInfoMgr::DropElements() const {
  if (const dom::Element set = m_element) CXmlChanParser::RemoveAllChannels(set);
}

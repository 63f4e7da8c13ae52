#include "channels/chan_info_mgr.h"

#include <algorithm>
#include <new>

#include "channels/chan_info.h"
#include "channels/chan_sort.h"
#include "xml/xml_chan_parser.h"

// Closes the list, in the order of Close. Members are alive until the end: a record that goes may
// still ask for what is left.
CChanInfoMgr::~CChanInfoMgr() {
  m_element = dom::Element();
  Records().swap(m_records);
}

void CChanInfoMgr::TakeOver(CChanInfoMgr& other) {
  m_records.swap(other.m_records);
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
  Records().swap(m_records);
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
  UINT index = 0;
  const HRESULT hr = pChannelInfo->GetChannelIndex(&index);
  if (FAILED(hr)) return hr;
  try {
    InsertAt(PlaceFor(index), pChannelInfo);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::RemoveChannelInfo(IChannelInfo* pChannelInfo) {
  const Locked locked(*this);
  if (pChannelInfo == nullptr) return E_POINTER;
  // One reference goes in any case: of a record that is not in the list, the caller's. Hosts that
  // hand theirs over rely on it.
  Record released = TakeOut(pChannelInfo);
  if (!released) released = Record::Attach(pChannelInfo);
  released.Reset();
  Renumber(true);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetDirty(BOOL* pbDirty) {
  const KeepAlive self(this);
  if (pbDirty == nullptr) return E_POINTER;
  BOOL dirty = m_dirty;
  for (std::size_t position = 0; dirty == 0 && position < m_records.size(); ++position) {
    BOOL recordDirty = 0;
    At(position)->GetDirty(&recordDirty);
    dirty = recordDirty != 0;
  }
  *pbDirty = dirty;
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
    if (!TakeOut(record.Get())) return E_FAIL;
    Renumber(true);
  }
  record->SetChannelIndex(nNewChannelIndex);
  hr = AddChannelInfo(record.Get());
  Renumber(true);
  return hr;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::SortChannel(ESortType SortType, BOOL bAscending) {
  const KeepAlive self(this);
  if (SortType != SortChannelByNo && SortType != SortChannelBySrvType) return E_FAIL;
  try {
    const Records before = m_records;
    Records sorted = before;
    if (SortType == SortChannelByNo) {
      chan_sort::ByNumber(sorted);
    } else {
      chan_sort::ByServiceType(sorted, bAscending);
    }
    // A record that changed the list while it was asked has the last word.
    if (Holds(before)) m_records.swap(sorted);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  // By number the array is ascending either way; descending shows in the numbering alone.
  Renumber(SortType == SortChannelBySrvType || bAscending != 0);
  return S_OK;
}

HeldRecord CChanInfoMgr::At(std::size_t position) const {
  return position < m_records.size() ? HeldRecord(m_records[position].Get()) : HeldRecord();
}

std::optional<UINT> CChanInfoMgr::IndexOf(IChannelInfo* record) {
  UINT index = 0;
  if (FAILED(record->GetChannelIndex(&index))) return std::nullopt;
  return index;
}

bool CChanInfoMgr::Holds(const Records& records) const {
  return std::equal(m_records.begin(), m_records.end(), records.begin(), records.end(),
                    [](const Record& a, const Record& b) { return a.Get() == b.Get(); });
}

CChanInfoMgr::Record CChanInfoMgr::TakeOut(IChannelInfo* channelInfo) {
  const auto found = std::find_if(m_records.begin(), m_records.end(), [=](const Record& record) {
    return record.Get() == channelInfo;
  });
  if (found == m_records.end()) return Record();
  Record taken = std::move(*found);
  m_records.erase(found);
  return taken;
}

std::size_t CChanInfoMgr::PlaceFor(UINT index) const {
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    const std::optional<UINT> other = IndexOf(At(position).Get());
    if (other && *other >= index) return position;
  }
  return m_records.size();
}

void CChanInfoMgr::InsertAt(std::size_t position, IChannelInfo* channelInfo) {
  if (m_records.size() == m_records.capacity()) {
    const std::size_t capacity = m_records.capacity();
    m_records.reserve(std::max(capacity + 1, capacity + capacity / 2));
  }
  // The list may have become shorter while its records were asked.
  position = std::min(position, m_records.size());
  m_records.insert(m_records.begin() + static_cast<std::ptrdiff_t>(position), Record(channelInfo));
}

void CChanInfoMgr::Renumber(bool ascending) {
  const std::size_t count = m_records.size();
  for (std::size_t number = 0; number < count; ++number) {
    const HeldRecord record = At(ascending ? number : count - 1 - number);
    if (record) record->SetChannelIndex(static_cast<UINT>(number + 1));
  }
  SetDirty(1);
  DropElements();
}

// The elements carry indexes that no longer hold; the next Save writes every channel afresh.
void CChanInfoMgr::DropElements() const {
  if (const dom::Element set = m_element) CXmlChanParser::RemoveAllChannels(set);
}

// Counting, looking up and stepping through the channels.
#include "channels/chan_info_mgr.h"
#include "channels/station_match.h"

template <typename Match>
HRESULT CChanInfoMgr::FindFirst(IChannelInfo** ppChannelInfo, Match match) const {
  if (ppChannelInfo == nullptr) return E_POINTER;
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    const HeldRecord record = At(position);
    if (!match(record.Get())) continue;
    *ppChannelInfo = Record(record.Get()).Detach();
    return S_OK;
  }
  return E_FAIL;
}

HRESULT CChanInfoMgr::Scan(ChannelFilter& filter, std::size_t first, std::size_t count, int step,
                           UINT* index) const {
  for (std::size_t position = first; count > 0;
       --count, position += static_cast<std::size_t>(step)) {
    const HeldRecord record = At(position);
    if (!record || !filter.Accepts(record.Get())) continue;
    *index = IndexOf(record.Get()).value_or(0);
    return S_OK;
  }
  return E_FAIL;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelCount(DWORD dwServiceTypeEnum, UINT* pnCount) {
  const Locked locked(*this);
  if (pnCount == nullptr) return E_POINTER;
  ChannelFilter filter(dwServiceTypeEnum, false);
  UINT count = 0;
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    if (filter.Accepts(At(position).Get())) ++count;
  }
  *pnCount = count;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelInfoByNo(UINT nChannelNo,
                                                           IChannelInfo** ppChannelInfo) {
  const Locked locked(*this);
  return FindFirst(ppChannelInfo, [=](IChannelInfo* record) {
    UINT number = 0;
    return SUCCEEDED(record->GetChannelNo(&number)) && number == nChannelNo;
  });
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelInfoByIndex(UINT nChannelIndex,
                                                              IChannelInfo** ppChannelInfo) {
  const Locked locked(*this);
  return FindFirst(ppChannelInfo,
                   [=](IChannelInfo* record) { return IndexOf(record) == nChannelIndex; });
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelInfoByStation(_StationTuneInfo* pStationInfo,
                                                                IChannelInfo** ppChannelInfo) {
  const Locked locked(*this);
  if (pStationInfo == nullptr) return E_POINTER;
  const StationView probe = StationView::Of(*pStationInfo);
  return FindFirst(ppChannelInfo, [&](IChannelInfo* record) {
    return station_match::IsOf(record, m_signalType, probe);
  });
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::FindPreChannel(UINT nChannelIndex, UINT* pnPreChannelIndex,
                                                       DWORD dwServiceTypeEnum, BOOL bAvailableOnly,
                                                       BOOL bLooping) {
  const KeepAlive self(this);
  if (pnPreChannelIndex == nullptr) return E_POINTER;
  const std::size_t count = m_records.size();
  if (nChannelIndex == 0 || nChannelIndex > count) return E_INVALIDARG;
  if (count < 2) return E_FAIL;
  ChannelFilter filter(dwServiceTypeEnum, bAvailableOnly != 0);
  const std::size_t before = nChannelIndex - 1;
  const HRESULT hr = Scan(filter, before - 1, before, -1, pnPreChannelIndex);
  if (SUCCEEDED(hr) || bLooping == 0) return hr;
  return Scan(filter, count - 1, count, -1, pnPreChannelIndex);
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::FindNextChannel(UINT nChannelIndex,
                                                        UINT* pnNextChannelIndex,
                                                        DWORD dwServiceTypeEnum,
                                                        BOOL bAvailableOnly, BOOL bLooping) {
  const KeepAlive self(this);
  if (pnNextChannelIndex == nullptr) return E_POINTER;
  const std::size_t count = m_records.size();
  if (nChannelIndex > count) return E_INVALIDARG;
  if (count < 2) return E_FAIL;
  ChannelFilter filter(dwServiceTypeEnum, bAvailableOnly != 0);
  const HRESULT hr = Scan(filter, nChannelIndex, count - nChannelIndex, 1, pnNextChannelIndex);
  // From index 0 the whole list was covered already.
  if (SUCCEEDED(hr) || bLooping == 0 || nChannelIndex == 0) return hr;
  return Scan(filter, 0, count, 1, pnNextChannelIndex);
}

// Counting, looking up and stepping through the channels.
#include "channels/chan_info_mgr.h"
#include "channels/station_match.h"

HRESULT CChanInfoMgr::Scan(ChannelFilter& filter, std::size_t first, std::size_t count, int step,
                           UINT* index) const {
  for (std::size_t position = first; count > 0;
       --count, position += static_cast<std::size_t>(step)) {
    const Channels::Held record = m_channels.At(position);
    if (!record || !filter.Accepts(record)) continue;
    *index = Channels::IndexOf(record).value_or(0);
    return S_OK;
  }
  return E_FAIL;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelCount(DWORD dwServiceTypeEnum, UINT* pnCount) {
  const Locked locked(*this);
  if (pnCount == nullptr) return E_POINTER;
  ChannelFilter filter(dwServiceTypeEnum, false);
  UINT count = 0;
  for (std::size_t position = 0; position < m_channels.Count(); ++position) {
    if (filter.Accepts(m_channels.At(position))) ++count;
  }
  *pnCount = count;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelInfoByNo(UINT nChannelNo,
                                                           IChannelInfo** ppChannelInfo) {
  const Locked locked(*this);
  if (ppChannelInfo == nullptr) return E_POINTER;
  return m_channels.FindBy<ChannelNumber>(nChannelNo, ppChannelInfo);
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelInfoByIndex(UINT nChannelIndex,
                                                              IChannelInfo** ppChannelInfo) {
  const Locked locked(*this);
  if (ppChannelInfo == nullptr) return E_POINTER;
  return m_channels.FindByIndex(nChannelIndex, ppChannelInfo);
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::GetChannelInfoByStation(_StationTuneInfo* pStationInfo,
                                                                IChannelInfo** ppChannelInfo) {
  const Locked locked(*this);
  if (pStationInfo == nullptr || ppChannelInfo == nullptr) return E_POINTER;
  const StationView probe = StationView::Of(*pStationInfo);
  return m_channels.FindFirst(
      [&](const Channels::Held& record) {
        return station_match::IsOf(record.Get(), m_signalType, probe);
      },
      ppChannelInfo);
}

HRESULT STDMETHODCALLTYPE CChanInfoMgr::FindPreChannel(UINT nChannelIndex, UINT* pnPreChannelIndex,
                                                       DWORD dwServiceTypeEnum, BOOL bAvailableOnly,
                                                       BOOL bLooping) {
  const KeepAlive self(this);
  if (pnPreChannelIndex == nullptr) return E_POINTER;
  const std::size_t count = m_channels.Count();
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
  const std::size_t count = m_channels.Count();
  if (nChannelIndex > count) return E_INVALIDARG;
  if (count < 2) return E_FAIL;
  ChannelFilter filter(dwServiceTypeEnum, bAvailableOnly != 0);
  const HRESULT hr = Scan(filter, nChannelIndex, count - nChannelIndex, 1, pnNextChannelIndex);
  // From index 0 the whole list was covered already.
  if (SUCCEEDED(hr) || bLooping == 0 || nChannelIndex == 0) return hr;
  return Scan(filter, 0, count, 1, pnNextChannelIndex);
}

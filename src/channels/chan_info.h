#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "channels/stations/kept_station.h"
#include "channels/stations/service_type.h"
#include "channels/stations/station_view.h"
#include "platform/bstr.h"
#include "records/own_record.h"

/// One channel. Fields of the station block are read and written inside the block only, also when
/// the signal type was changed after the station was set.
class CChanInfo : public OwnRecord<CChanInfo, IChannelInfo> {
 public:
  CChanInfo() = default;

  // What GetChannelIndex, GetChannelNo, GetServiceType and GetFavor hand out, without a call.
  /// None for the index that stands for none.
  std::optional<UINT> Index() const;
  UINT Number() const { return static_cast<UINT>(m_station.Get().lPhysicalChannel); }
  const service_type::Answer& Service() const { return m_service; }
  UINT Favor() const { return m_favor; }
  /// SetChannelIndex by a list that counts the change itself; returns whether it was one.
  bool NumberAs(UINT index);
  /// What GetStationInfo would hand out, without a copy. Valid until the record changes.
  StationView ViewStation() const;
  /// Whether there was no memory for the station that was set last, which SetStationInfo does not
  /// tell.
  bool IsStationLost() const { return m_isStationLost; }

  HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* pSignalType) override;
  HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType SignalType) override;
  HRESULT STDMETHODCALLTYPE GetServiceType(EServiceType* pServiceType) override;
  HRESULT STDMETHODCALLTYPE SetServiceType(EServiceType ServiceType) override;
  HRESULT STDMETHODCALLTYPE GetChannelNo(UINT* pnChannelNo) override;
  HRESULT STDMETHODCALLTYPE SetChannelNo(UINT nChannelNo) override;
  HRESULT STDMETHODCALLTYPE GetChannelIndex(UINT* pnIndex) override;
  HRESULT STDMETHODCALLTYPE SetChannelIndex(UINT nIndex) override;
  HRESULT STDMETHODCALLTYPE GetChannelName(BSTR* pbstrName) override;
  HRESULT STDMETHODCALLTYPE SetChannelName(BSTR bstrName) override;
  HRESULT STDMETHODCALLTYPE GetChannelDspName(BSTR* pbstrName) override;
  HRESULT STDMETHODCALLTYPE SetChannelDspName(BSTR bstrName) override;
  HRESULT STDMETHODCALLTYPE GetChannelFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetChannelFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetChannelOffsetFreq(LONG* plFreq) override;
  HRESULT STDMETHODCALLTYPE SetChannelOffsetFreq(LONG lFreq) override;
  HRESULT STDMETHODCALLTYPE GetStationInfo(_StationTuneInfo* pStationInfo) override;
  HRESULT STDMETHODCALLTYPE SetStationInfo(_StationTuneInfo* pStationInfo) override;
  HRESULT STDMETHODCALLTYPE GetFavor(UINT* pnFavor) override;
  HRESULT STDMETHODCALLTYPE SetFavor(UINT nFavor) override;
  HRESULT STDMETHODCALLTYPE GetLock(BOOL* pbLock) override;
  HRESULT STDMETHODCALLTYPE SetLock(BOOL bLock) override;
  HRESULT STDMETHODCALLTYPE GetDirty(BOOL* pbDirty) override;
  HRESULT STDMETHODCALLTYPE SetDirty(BOOL bDirty) override;
  HRESULT STDMETHODCALLTYPE IsScrambled(BOOL* pbScrambled) override;
  HRESULT STDMETHODCALLTYPE GetMhp(BOOL* pbHasmhp) override;

 private:
  template <typename T>
  HRESULT StoreChanged(T& field, T value);
  /// The 32-bit value of the block; none where there is no block or it ends before.
  std::optional<std::uint32_t> Word(std::size_t offset) const;
  /// The name of the block up to its terminator or the block's end; none as for Word.
  std::optional<std::string> NarrowName() const;
  void FillDisplayName();
  void NoteService();

  InputSignalType m_signalType = InputSignalUnknown;
  KeptStation m_station;
  // Follows from the two above.
  service_type::Answer m_service;
  Bstr m_displayName;
  UINT m_index = 0;
  UINT m_favor = 0;
  BOOL m_lock = 0;
  BOOL m_dirty = 0;
  bool m_isStationLost = false;
};

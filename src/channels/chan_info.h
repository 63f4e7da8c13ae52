#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

#include "channels/station_info.h"
#include "core/gen_com_obj.h"
#include "platform/bstr.h"

/// One channel. Fields of the station block are read and written inside the block only, also when
/// the signal type was changed after the station was set.
class CChanInfo : public CGenComObj<CChanInfo, IChannelInfo> {
 public:
  CChanInfo() = default;

  /// The record behind the interface when it is exactly of this class, else null: a host may
  /// implement records of its own. Told by the table of methods; not for null.
  static const CChanInfo* From(const IChannelInfo* channelInfo) {
    return TableOfMethods(channelInfo) == s_table ? static_cast<const CChanInfo*>(channelInfo)
                                                  : nullptr;
  }
  /// What GetStationInfo would hand out, without a copy. Valid until the record changes.
  StationView ViewStation() const;

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
  static const void* TableOfMethods(const void* object) {
    const void* table = nullptr;
    std::memcpy(&table, object, sizeof(table));
    return table;
  }
  static const void* const s_table;

  template <typename T>
  HRESULT StoreChanged(T& field, T value);
  /// The 32-bit value of the block; none where there is no block or it ends before.
  std::optional<std::uint32_t> Word(std::size_t offset) const;
  /// The name of the block up to its terminator or the block's end; none as for Word.
  std::optional<std::string> NarrowName() const;
  void FillDisplayName();

  InputSignalType m_signalType = InputSignalUnknown;
  StationInfo m_station;
  Bstr m_displayName;
  UINT m_index = 0;
  UINT m_favor = 0;
  BOOL m_lock = 0;
  BOOL m_dirty = 0;
};

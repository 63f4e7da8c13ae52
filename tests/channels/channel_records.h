// Records, stations and lists for tests.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/chan_info.h"
#include "channels/chan_info_mgr.h"
#include "core/station_blocks.h"
#include "platform/com_ptr.h"
#include "support/expect.h"

inline constexpr InputSignalType kAllSignalTypes[] = {
    InputSignalUnknown,         InputSignalAnalogAntenna, InputSignalAnalogCable,
    InputSignalAnalogComposite, InputSignalAnalogSVideo,  InputSignalFMRadio,
    InputSignalAMRadio,         InputSignalATSCAntenna,   InputSignalATSCCable,
    InputSignalDVBCable,        InputSignalDVBSatellite,  InputSignalDVBTerrestrial,
    InputSignalDVBHandheld,     InputSignalISDBCable,     InputSignalISDBSatellite,
    InputSignalISDBTerrestrial, InputSignalTDMBMobile,    InputSignalISDBTerrestrialOneSeg,
};

struct BlockSize {
  InputSignalType signalType;
  DWORD size;
};
/// The types with a block.
inline constexpr BlockSize kBlockSizes[] = {
    {InputSignalAnalogAntenna, 100},   {InputSignalAnalogCable, 100},
    {InputSignalFMRadio, 92},          {InputSignalATSCAntenna, 528},
    {InputSignalATSCCable, 528},       {InputSignalDVBSatellite, 2784},
    {InputSignalDVBTerrestrial, 2484}, {InputSignalDVBHandheld, 1096},
    {InputSignalTDMBMobile, 4716},     {InputSignalISDBTerrestrialOneSeg, 2580},
};

inline DWORD BlockSizeOf(InputSignalType signalType) {
  for (const BlockSize& row : kBlockSizes) {
    if (row.signalType == signalType) return row.size;
  }
  return 0;
}

/// A station as a host makes it; the block is the host's and goes with the object.
class Station {
 public:
  explicit Station(InputSignalType signalType) : Station(signalType, BlockSizeOf(signalType)) {}
  Station(InputSignalType signalType, std::size_t blockSize) : m_block(blockSize) {
    m_info.InputSignal = signalType;
    m_info.cbInformation = static_cast<DWORD>(blockSize);
    m_info.pbInformation = m_block.data();
  }
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;

  Station& Word(std::size_t offset, std::uint32_t value) {
    station_blocks::Store(&m_block.at(offset + 3) - 3, 4, value);
    return *this;
  }
  Station& Text(std::size_t offset, std::string_view text) {
    for (const char c : text) m_block.at(offset++) = static_cast<BYTE>(c);
    return *this;
  }
  Station& Fill(BYTE value) {
    m_block.assign(m_block.size(), value);
    return *this;
  }
  _StationTuneInfo* operator->() { return &m_info; }
  _StationTuneInfo* Get() { return &m_info; }
  std::vector<BYTE>& Block() { return m_block; }

 private:
  std::vector<BYTE> m_block;
  _StationTuneInfo m_info = {};
};

/// A copy that GetStationInfo handed out; frees its block.
class StationCopy {
 public:
  explicit StationCopy(IChannelInfo* record) { ExpectHr(S_OK, record->GetStationInfo(&m_info)); }
  StationCopy(const StationCopy&) = delete;
  StationCopy& operator=(const StationCopy&) = delete;
  ~StationCopy() { CoTaskMemFree(m_info.pbInformation); }

  const _StationTuneInfo* operator->() const { return &m_info; }
  _StationTuneInfo* Get() { return &m_info; }
  std::vector<BYTE> Bytes() const {
    return {m_info.pbInformation, m_info.pbInformation + m_info.cbInformation};
  }

 private:
  _StationTuneInfo m_info = {};
};

inline ComPtr<IChannelInfo> MakeRecord(InputSignalType signalType) {
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, CChanInfo::CreateInstance(record.Receive()));
  record->SetSignalType(signalType);
  return record;
}

inline ComPtr<IChannelInfo> MakeRecord(InputSignalType signalType, UINT index, UINT number = 0) {
  ComPtr<IChannelInfo> record = MakeRecord(signalType);
  record->SetChannelIndex(index);
  record->SetChannelNo(number);
  return record;
}

inline ComPtr<IChannelInfoMgr> MakeList(InputSignalType signalType) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, CChanInfoMgr::CreateInstance(list.Receive()));
  ExpectHr(S_OK, list->SetSignalType(signalType));
  return list;
}

inline UINT IndexOf(IChannelInfo* record) {
  UINT index = 0;
  ExpectHr(S_OK, record->GetChannelIndex(&index));
  return index;
}

inline UINT NumberOf(IChannelInfo* record) {
  UINT number = 0;
  ExpectHr(S_OK, record->GetChannelNo(&number));
  return number;
}

inline BOOL DirtyOf(IChannelInfo* record) {
  BOOL dirty = 77;
  ExpectHr(S_OK, record->GetDirty(&dirty));
  return dirty;
}

inline BOOL DirtyOf(IChannelInfoMgr* list) {
  BOOL dirty = 77;
  ExpectHr(S_OK, list->GetDirty(&dirty));
  return dirty;
}

inline UINT CountOf(IChannelInfoMgr* list, DWORD mask = 0xFFFFFFFF) {
  UINT count = 4711;
  ExpectHr(S_OK, list->GetChannelCount(mask, &count));
  return count;
}

/// A record that a host implements itself. What is not set answers plainly; hooks run at the start
/// of every getter of the list's interest.
class HostRecord : public CGenComObj<HostRecord, IChannelInfo> {
 public:
  UINT number = 0;
  UINT index = 0;
  UINT favor = 0;
  BOOL dirty = 0;
  EServiceType serviceType = ServiceDigitalTV;
  HRESULT numberResult = S_OK;
  HRESULT indexResult = S_OK;
  HRESULT favorResult = S_OK;
  HRESULT dirtyResult = S_OK;
  HRESULT serviceTypeResult = S_OK;
  HRESULT stationResult = S_OK;
  std::vector<BYTE> block;
  _StationTuneInfo station = {};
  std::function<void()> onCall;
  int calls = 0;
  static inline int alive = 0;

  HostRecord() { ++alive; }
  ~HostRecord() override { --alive; }

  static ComPtr<IChannelInfo> Make(HostRecord** raw) {
    *raw = new HostRecord;
    return ComPtr<IChannelInfo>::Attach(*raw);
  }

  HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* p) override {
    *p = InputSignalAnalogCable;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetServiceType(EServiceType* p) override {
    return Answer(serviceTypeResult, serviceType, p);
  }
  HRESULT STDMETHODCALLTYPE SetServiceType(EServiceType) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetChannelNo(UINT* p) override {
    return Answer(numberResult, number, p);
  }
  HRESULT STDMETHODCALLTYPE SetChannelNo(UINT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetChannelIndex(UINT* p) override {
    return Answer(indexResult, index, p);
  }
  HRESULT STDMETHODCALLTYPE SetChannelIndex(UINT value) override {
    Called();
    index = value;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetChannelName(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetChannelName(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetChannelDspName(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetChannelDspName(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetChannelFreq(DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetChannelFreq(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetChannelOffsetFreq(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetChannelOffsetFreq(LONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetStationInfo(_StationTuneInfo* p) override {
    Called();
    if (FAILED(stationResult)) {
      // Not a valid pointer: nobody may free what a failing getter left.
      p->pbInformation = block.data();
      return stationResult;
    }
    *p = station;
    p->cbInformation = static_cast<DWORD>(block.size());
    p->pbInformation = nullptr;
    if (!block.empty()) {
      p->pbInformation = static_cast<BYTE*>(CoTaskMemAlloc(block.size()));
      std::copy(block.begin(), block.end(), p->pbInformation);
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetStationInfo(_StationTuneInfo*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetFavor(UINT* p) override { return Answer(favorResult, favor, p); }
  HRESULT STDMETHODCALLTYPE SetFavor(UINT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetLock(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetLock(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetDirty(BOOL* p) override { return Answer(dirtyResult, dirty, p); }
  HRESULT STDMETHODCALLTYPE SetDirty(BOOL value) override {
    Called();
    dirty = value;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsScrambled(BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMhp(BOOL*) override { return E_NOTIMPL; }

 private:
  void Called() {
    ++calls;
    // A copy: the hook may replace itself.
    if (const std::function<void()> hook = onCall) hook();
  }
  template <typename T>
  HRESULT Answer(HRESULT result, T value, T* out) {
    Called();
    if (result == S_OK) *out = value;
    return result;
  }
};

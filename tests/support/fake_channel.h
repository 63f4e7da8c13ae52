// A channel record as a host could implement one: plain fields, and answers that a test chooses.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

#include "core/interfaces.h"
#include "platform/bstr.h"

/// Lives on the stack; references are counted and never destroy it.
class FakeChannel final : public IChannelInfo {
 public:
  /// The getters that a codec asks, by name.
  enum class Getter { None, SignalType, Station, Index, Favor, Lock, Name, DisplayName };
  static constexpr HRESULT kFailure = static_cast<HRESULT>(0x8004BEEFU);

  explicit FakeChannel(InputSignalType type = InputSignalUnknown, std::size_t blockSize = 0)
      : signalType(type), block(blockSize) {}
  FakeChannel(const FakeChannel&) = delete;
  FakeChannel& operator=(const FakeChannel&) = delete;
  ~FakeChannel() { EXPECT_EQ(1U, m_references) << "references of the record leaked"; }

  InputSignalType signalType;
  UINT index = 0;
  /// Answered before `index`, one for every call.
  std::deque<UINT> passingIndexes;
  UINT favor = 0;
  BOOL lock = 0;
  Bstr name;
  Bstr displayName;
  /// Without its block, which is the next member; empty: the station has none.
  _StationTuneInfo station = {};
  std::vector<BYTE> block;
  /// The getter that answers kFailure and writes nothing.
  Getter failing = Getter::None;
  HRESULT setStationResult = S_OK;
  int stationsSet = 0;
  /// What SetStationInfo was given as its signal type and byte count.
  InputSignalType givenSignalType = InputSignalUnknown;
  DWORD givenByteCount = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_references; }

  HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* pSignalType) override {
    return Answer(Getter::SignalType, signalType, pSignalType);
  }
  HRESULT STDMETHODCALLTYPE GetChannelIndex(UINT* pnIndex) override {
    const UINT answer = passingIndexes.empty() ? index : passingIndexes.front();
    if (!passingIndexes.empty()) passingIndexes.pop_front();
    return Answer(Getter::Index, answer, pnIndex);
  }
  HRESULT STDMETHODCALLTYPE SetChannelIndex(UINT nIndex) override {
    index = nIndex;
    return E_NOTIMPL;  // as the library's own record
  }
  HRESULT STDMETHODCALLTYPE GetFavor(UINT* pnFavor) override {
    return Answer(Getter::Favor, favor, pnFavor);
  }
  HRESULT STDMETHODCALLTYPE SetFavor(UINT nFavor) override {
    favor = nFavor;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetLock(BOOL* pbLock) override {
    return Answer(Getter::Lock, lock, pbLock);
  }
  HRESULT STDMETHODCALLTYPE SetLock(BOOL bLock) override {
    lock = bLock;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetChannelName(BSTR* pbstrName) override {
    if (failing == Getter::Name) return kFailure;
    *pbstrName = Bstr::Copy(name.Get()).Release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetChannelDspName(BSTR* pbstrName) override {
    if (failing == Getter::DisplayName) return kFailure;
    *pbstrName = Bstr::Copy(displayName.Get()).Release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetChannelDspName(BSTR bstrName) override {
    displayName = Bstr::Copy(bstrName);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetStationInfo(_StationTuneInfo* pStationInfo) override {
    if (failing == Getter::Station) {
      // Nobody may free what a failing getter left.
      pStationInfo->pbInformation = block.data();
      return kFailure;
    }
    *pStationInfo = station;
    pStationInfo->cbInformation = static_cast<DWORD>(block.size());
    pStationInfo->pbInformation = nullptr;
    if (block.empty()) return S_OK;
    pStationInfo->pbInformation = static_cast<BYTE*>(CoTaskMemAlloc(block.size()));
    // As the library's own record: without memory the station has no block.
    if (pStationInfo->pbInformation == nullptr) return S_OK;
    std::copy(block.begin(), block.end(), pStationInfo->pbInformation);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetStationInfo(_StationTuneInfo* pStationInfo) override {
    ++stationsSet;
    station = *pStationInfo;
    block.assign(station.pbInformation, station.pbInformation + station.cbInformation);
    givenSignalType = station.InputSignal;
    givenByteCount = station.cbInformation;
    station.pbInformation = nullptr;
    return setStationResult;
  }

  // Nothing that moves a channel between record and file may ask for any of these.
  HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE GetServiceType(EServiceType*) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE SetServiceType(EServiceType) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE GetChannelNo(UINT*) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE SetChannelNo(UINT) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE SetChannelName(BSTR) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE GetChannelFreq(DWORD*) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE SetChannelFreq(DWORD) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE GetChannelOffsetFreq(LONG*) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE SetChannelOffsetFreq(LONG) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE GetDirty(BOOL*) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE SetDirty(BOOL) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE IsScrambled(BOOL*) override { return Unexpected(); }
  HRESULT STDMETHODCALLTYPE GetMhp(BOOL*) override { return Unexpected(); }

 private:
  template <typename T>
  HRESULT Answer(Getter getter, T value, T* out) {
    if (failing == getter) return kFailure;
    *out = value;
    return S_OK;
  }
  HRESULT Unexpected() {
    ADD_FAILURE() << "a method that codecs have no use for was called";
    return E_NOTIMPL;
  }

  ULONG m_references = 1;
};

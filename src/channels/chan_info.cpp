#include "channels/chan_info.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

#include "channels/channel_keys.h"
#include "core/station_blocks.h"
#include "platform/lack_of_memory.h"
#include "platform/text.h"

namespace {

using station_blocks::OffsetOf;

constexpr UINT kNoIndex = std::numeric_limits<UINT>::max();

// Room of a display name that is made from the station, the terminator included.
constexpr std::size_t kDisplayNameSize = 260;

constexpr std::size_t kServiceType = OffsetOf(station_blocks::kAtscChannel, "serviceType");
static_assert(OffsetOf(station_blocks::kDvbsChannel, "serviceType") == kServiceType);
static_assert(OffsetOf(station_blocks::kTdmbStreams, "ServiceType") == kServiceType);

bool IsAtsc(InputSignalType signalType) {
  return signalType == InputSignalATSCAntenna || signalType == InputSignalATSCCable;
}

// Where the name stands in a block of that type.
std::optional<std::size_t> NamePlace(InputSignalType signalType) {
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) return std::nullopt;
  return station_blocks::FindField(layout->channel, "name")->offset;
}

template <typename T>
HRESULT Get(T value, T* out) {
  if (out == nullptr) return E_POINTER;
  *out = value;
  return S_OK;
}

}  // namespace

std::optional<UINT> CChanInfo::Index() const {
  return m_index == kNoIndex ? std::nullopt : std::optional<UINT>(m_index);
}

bool CChanInfo::NumberAs(UINT index) {
  m_dirty = 1;
  return std::exchange(m_index, index) != index;
}

StationView CChanInfo::ViewStation() const {
  const station_blocks::Layout* layout = station_blocks::Find(m_signalType);
  if (layout == nullptr) return {};
  const _StationTuneInfo& station = m_station.Get();
  // A name may stand behind the bytes that the station counts.
  const std::span<const BYTE> kept = m_station.Kept();
  return {station.lPhysicalChannel, station.dwFrequency, station.lTSID,
          kept.first(std::min<std::size_t>(kept.size(), station.cbInformation)), layout->size};
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetSignalType(InputSignalType* pSignalType) {
  return Get(m_signalType, pSignalType);
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetSignalType(InputSignalType SignalType) {
  m_signalType = SignalType;
  NoteService();
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetServiceType(EServiceType* pServiceType) {
  if (pServiceType == nullptr) return E_POINTER;
  return m_service.Give(*pServiceType);
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetServiceType(EServiceType) { return E_NOTIMPL; }

HRESULT STDMETHODCALLTYPE CChanInfo::GetChannelNo(UINT* pnChannelNo) {
  return Get(Number(), pnChannelNo);
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetChannelNo(UINT nChannelNo) {
  StoreKey<ChannelNumber>(m_station.Fields().lPhysicalChannel, static_cast<LONG>(nChannelNo));
  SetDirty(1);
  // Stored, and answered so all the same: hosts know and ignore it.
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetChannelIndex(UINT* pnIndex) {
  if (pnIndex == nullptr) return E_POINTER;
  const std::optional<UINT> index = Index();
  if (!index) return E_FAIL;
  *pnIndex = *index;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetChannelIndex(UINT nIndex) {
  StoreKey<ChannelIndex>(m_index, nIndex);
  SetDirty(1);
  // As SetChannelNo.
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetChannelName(BSTR* pbstrName) {
  if (pbstrName == nullptr) return E_POINTER;
  const std::optional<std::string> name = RaisingComError([this] { return NarrowName(); });
  if (!name) return E_FAIL;
  *pbstrName = text::FromNarrow(*name).Release();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetChannelName(BSTR bstrName) {
  const UINT length = SysStringLen(bstrName);
  if (length == 0) return E_INVALIDARG;
  // A T-DMB name is read from its block and never written there.
  if (m_signalType == InputSignalTDMBMobile) return E_FAIL;
  const std::optional<std::size_t> place = NamePlace(m_signalType);
  const std::size_t blockSize = m_station.BlockSize();
  if (!place || *place >= blockSize) return E_FAIL;

  // No limit but the end of the block: a long name runs over the fields behind its own, as it
  // always has, and hosts read it back whole.
  RaisingComError([=, this] {
    const std::string wholeName = text::ToNarrow({bstrName, length});
    const std::string_view name = wholeName.c_str();
    const std::size_t taken = text::CutLength(name, blockSize - *place - 1);
    const std::span<BYTE> room = m_station.Front(*place + taken + 1).subspan(*place);
    std::copy_n(name.begin(), taken, room.begin());
    room[taken] = 0;
  });
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetChannelDspName(BSTR* pbstrName) {
  if (pbstrName == nullptr) return E_POINTER;
  *pbstrName = Bstr::Copy(m_displayName.Get()).Release();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetChannelDspName(BSTR bstrName) {
  m_displayName = Bstr::Copy(bstrName);
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetChannelFreq(DWORD* pdwFreq) {
  return Get(m_station.Get().dwFrequency, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetChannelFreq(DWORD dwFreq) {
  return StoreChanged(m_station.Fields().dwFrequency, dwFreq);
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetChannelOffsetFreq(LONG* plFreq) {
  return Get(m_station.Get().lOffsetFreq, plFreq);
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetChannelOffsetFreq(LONG lFreq) {
  return StoreChanged(m_station.Fields().lOffsetFreq, lFreq);
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetStationInfo(_StationTuneInfo* pStationInfo) {
  if (pStationInfo == nullptr) return E_POINTER;
  OwnedStation copy;
  // A failed copy is a zeroed station, and no error here.
  AnsweringLackOfMemory([&] { return m_station.CopyTo(copy, m_signalType); });
  *pStationInfo = copy.Release();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::SetStationInfo(_StationTuneInfo* pStationInfo) {
  if (pStationInfo == nullptr) return E_POINTER;
  // As in GetStationInfo.
  const UINT number = Number();
  const HRESULT hr =
      AnsweringLackOfMemory([=, this] { return m_station.Assign(*pStationInfo, m_signalType); });
  m_isStationLost = hr == E_OUTOFMEMORY;
  NoteChange<ChannelNumber>(number != Number());
  NoteService();
  SetDirty(1);
  if (m_displayName.IsEmpty()) RaisingComError([this] { FillDisplayName(); });
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetFavor(UINT* pnFavor) { return Get(m_favor, pnFavor); }

HRESULT STDMETHODCALLTYPE CChanInfo::SetFavor(UINT nFavor) {
  m_favor = nFavor;
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetLock(BOOL* pbLock) { return Get(m_lock, pbLock); }

HRESULT STDMETHODCALLTYPE CChanInfo::SetLock(BOOL bLock) {
  m_lock = bLock;
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetDirty(BOOL* pbDirty) { return Get(m_dirty, pbDirty); }

HRESULT STDMETHODCALLTYPE CChanInfo::SetDirty(BOOL bDirty) {
  m_dirty = bDirty;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CChanInfo::IsScrambled(BOOL* pbScrambled) {
  constexpr std::size_t kAccess = OffsetOf(station_blocks::kDvbt.channel, "CA");
  static_assert(kAccess == OffsetOf(station_blocks::kDvbs.channel, "CA"));
  const bool tells =
      m_signalType == InputSignalDVBSatellite || m_signalType == InputSignalDVBTerrestrial;
  return Get(tells ? static_cast<BOOL>(Word(kAccess).value_or(0)) : 0, pbScrambled);
}

HRESULT STDMETHODCALLTYPE CChanInfo::GetMhp(BOOL* pbHasmhp) {
  using station_blocks::kDvbsStreams;
  using station_blocks::kDvbtStreams;
  const auto counts = [this](std::size_t dsmcc, std::size_t ait) {
    return BOOL{Word(dsmcc).value_or(0) >= 1 && Word(ait).value_or(0) >= 1};
  };
  BOOL has = 0;
  if (m_signalType == InputSignalDVBSatellite) {
    has = counts(OffsetOf(kDvbsStreams, "numOfDsmccStreams"),
                 OffsetOf(kDvbsStreams, "numOfMhpAitStreams"));
  } else if (m_signalType == InputSignalDVBTerrestrial) {
    has = counts(OffsetOf(kDvbtStreams, "numOfDsmccStreams"),
                 OffsetOf(kDvbtStreams, "numOfMhpAitStreams"));
  }
  return Get(has, pbHasmhp);
}

template <typename T>
HRESULT CChanInfo::StoreChanged(T& field, T value) {
  if (field == value) return S_FALSE;
  field = value;
  SetDirty(1);
  return S_OK;
}

inline std::optional<std::uint32_t> CChanInfo::Word(std::size_t offset) const {
  StationView view;
  view.bytes = m_station.Kept();
  view.blockSize = m_station.BlockSize();
  return view.Word(offset);
}

std::optional<std::string> CChanInfo::NarrowName() const {
  const std::optional<std::size_t> place = NamePlace(m_signalType);
  if (!place || *place >= m_station.BlockSize()) return std::nullopt;
  const std::span<const BYTE> kept = m_station.Kept();
  const std::span<const BYTE> room = kept.subspan(std::min(*place, kept.size()));
  return std::string(room.begin(), std::find(room.begin(), room.end(), BYTE{0}));
}

// A name never reaches the place of the code, whatever its length.
void CChanInfo::NoteService() { m_service.Learn(m_signalType, Word(kServiceType)); }

void CChanInfo::FillDisplayName() {
  if (!IsAtsc(m_signalType)) {
    BSTR name = nullptr;
    GetChannelName(&name);
    m_displayName = Bstr::Attach(name);
    return;
  }
  using station_blocks::kAtscChannel;
  const std::optional<std::uint32_t> major = Word(OffsetOf(kAtscChannel, "majorChannel"));
  const std::optional<std::uint32_t> minor = Word(OffsetOf(kAtscChannel, "minorChannel"));
  const std::optional<std::string> name = NarrowName();
  if (!major || !minor || !name) return;
  const std::string whole = std::to_string(static_cast<std::int32_t>(*major)) + "." +
                            std::to_string(static_cast<std::int32_t>(*minor)) + " " + *name;
  m_displayName = text::FromNarrow({whole.data(), text::CutLength(whole, kDisplayNameSize - 1)});
}

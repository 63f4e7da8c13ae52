#include "channels/station_info.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/station_blocks.h"

StationView StationView::Of(const _StationTuneInfo& station) {
  StationView view = {station.lPhysicalChannel, station.dwFrequency, station.lTSID, {}, 0};
  if (station.pbInformation != nullptr) {
    view.bytes = {station.pbInformation, station.cbInformation};
    view.blockSize = station.cbInformation;
  }
  return view;
}

std::optional<std::uint32_t> StationView::Word(std::size_t offset) const {
  constexpr std::size_t kWidth = 4;
  if (blockSize < kWidth || offset > blockSize - kWidth) return std::nullopt;
  BYTE word[kWidth] = {};
  if (offset < bytes.size()) {
    std::memcpy(word, bytes.data() + offset, std::min(kWidth, bytes.size() - offset));
  }
  return station_blocks::Fetch(word, kWidth);
}

HRESULT StationInfo::Assign(const _StationTuneInfo& source, InputSignalType signalType) {
  Reset();
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) return E_FAIL;
  BYTE* block = static_cast<BYTE*>(CoTaskMemAlloc(layout->size));
  if (block == nullptr) return E_FAIL;

  const DWORD count =
      source.pbInformation == nullptr ? 0 : std::min<DWORD>(source.cbInformation, layout->size);
  if (count != 0) std::memcpy(block, source.pbInformation, count);
  std::memset(block + count, 0, layout->size - count);

  m_station = source;
  m_station.InputSignal = signalType;
  m_station.cbInformation = count;
  m_station.pbInformation = block;
  return S_OK;
}

void StationInfo::Reset() {
  const _StationTuneInfo old = Release();
  CoTaskMemFree(old.pbInformation);
}

_StationTuneInfo StationInfo::Release() { return std::exchange(m_station, {}); }

std::span<BYTE> StationInfo::Block() {
  const std::span<const BYTE> block = std::as_const(*this).Block();
  return {m_station.pbInformation, block.size()};
}

std::span<const BYTE> StationInfo::Block() const {
  // The type that Assign stored is the one that it took the size from.
  const station_blocks::Layout* layout = station_blocks::Find(m_station.InputSignal);
  if (m_station.pbInformation == nullptr || layout == nullptr) return {};
  return {m_station.pbInformation, layout->size};
}

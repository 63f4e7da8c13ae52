#include "channels/stations/owned_station.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "core/station_blocks.h"
#include "core/task_block.h"

HRESULT OwnedStation::Assign(const _StationTuneInfo& source, InputSignalType signalType) {
  Reset();
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) return E_FAIL;
  TaskBlock block = TaskBlock::Attach(static_cast<BYTE*>(CoTaskMemAlloc(layout->size)));
  if (!block) throw std::bad_alloc();
  const DWORD count =
      source.pbInformation == nullptr ? 0 : std::min<DWORD>(source.cbInformation, layout->size);
  if (count != 0) std::memcpy(block.Get(), source.pbInformation, count);
  std::memset(block.Get() + count, 0, layout->size - count);
  m_station = source;
  m_station.InputSignal = signalType;
  m_station.cbInformation = count;
  m_station.pbInformation = block.Release();
  return S_OK;
}

void OwnedStation::Reset() {
  const _StationTuneInfo old = Release();
  CoTaskMemFree(old.pbInformation);
}

_StationTuneInfo OwnedStation::Release() { return std::exchange(m_station, {}); }

std::span<BYTE> OwnedStation::Block() {
  const std::span<const BYTE> block = std::as_const(*this).Block();
  return {m_station.pbInformation, block.size()};
}

std::span<const BYTE> OwnedStation::Block() const {
  // The type that Assign stored is the one that it took the size from.
  const station_blocks::Layout* layout = station_blocks::Find(m_station.InputSignal);
  if (m_station.pbInformation == nullptr || layout == nullptr) return {};
  return {m_station.pbInformation, layout->size};
}

#include "channels/stations/kept_station.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include "core/station_blocks.h"

namespace {

// How many bytes there are up to the last one that is not zero.
std::size_t SizeWithoutZeros(const BYTE* bytes, std::size_t size) {
  const auto word = [&](std::size_t back) {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes + size - back * sizeof(value), sizeof(value));
    return value;
  };
  // Half of a block and more is zeros: four words at once.
  while (size >= 4 * sizeof(std::uint64_t) && (word(1) | word(2) | word(3) | word(4)) == 0) {
    size -= 4 * sizeof(std::uint64_t);
  }
  while (size > 0 && bytes[size - 1] == 0) --size;
  return size;
}

}  // namespace

HRESULT KeptStation::Assign(const _StationTuneInfo& source, InputSignalType signalType) {
  Reset();
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) return E_FAIL;
  const BYTE* bytes = source.pbInformation;
  const DWORD count = bytes == nullptr ? 0 : std::min<DWORD>(source.cbInformation, layout->size);
  const std::size_t kept = SizeWithoutZeros(bytes, count);
  if (bytes != nullptr && kept != 0) {
    m_block = TaskBlock::Attach(static_cast<BYTE*>(CoTaskMemAlloc(kept)));
    if (!m_block) throw std::bad_alloc();
    std::memcpy(m_block.Get(), bytes, kept);
  }
  m_kept = kept;
  m_station = source;
  m_station.InputSignal = signalType;
  m_station.cbInformation = count;
  m_station.pbInformation = nullptr;
  return S_OK;
}

HRESULT KeptStation::CopyTo(OwnedStation& copy, InputSignalType signalType) const {
  _StationTuneInfo source = m_station;
  source.pbInformation = m_block.Get();
  source.cbInformation = std::min(m_station.cbInformation, static_cast<DWORD>(m_kept));
  const HRESULT hr = copy.Assign(source, signalType);
  if (FAILED(hr)) return hr;
  copy.Fields().cbInformation =
      std::min(m_station.cbInformation, static_cast<DWORD>(copy.Block().size()));
  return S_OK;
}

std::size_t KeptStation::BlockSize() const {
  // The type that Assign stored is the one that it took the size from.
  const station_blocks::Layout* layout = station_blocks::Find(m_station.InputSignal);
  return layout == nullptr ? 0 : layout->size;
}

std::span<BYTE> KeptStation::Front(std::size_t size) {
  if (m_kept < size) {
    TaskBlock grown(size);
    if (m_kept != 0) std::memcpy(grown.Get(), m_block.Get(), m_kept);
    m_block = std::move(grown);
    m_kept = size;
  }
  return {m_block.Get(), size};
}

void KeptStation::Reset() {
  m_station = {};
  m_block = TaskBlock();
  m_kept = 0;
}

#pragma once

#include <cstddef>
#include <span>

#include "channels/stations/owned_station.h"
#include "core/task_block.h"

/// The station that a record holds. Of its block no more is kept than there is up to the last byte
/// that is not zero: most of a digital one is room for streams that few channels have, and lists
/// hold them by the ten thousand. What is not kept reads as zero.
class KeptStation {
 public:
  KeptStation() = default;
  KeptStation(const KeptStation&) = delete;
  KeptStation& operator=(const KeptStation&) = delete;

  /// As OwnedStation::Assign.
  HRESULT Assign(const _StationTuneInfo& source, InputSignalType signalType);
  /// The station that OwnedStation::Assign would make of the whole of this one, and its answer.
  HRESULT CopyTo(OwnedStation& copy, InputSignalType signalType) const;

  /// Without the block; the byte count is that of the whole.
  const _StationTuneInfo& Get() const { return m_station; }
  _StationTuneInfo& Fields() { return m_station; }

  /// Whole size of the block, however much of it is kept; 0: no block.
  std::size_t BlockSize() const;
  std::span<const BYTE> Kept() const { return {m_block.Get(), m_kept}; }
  /// The first bytes of the block, which can be written. `size` is no more than BlockSize().
  /// Raises std::bad_alloc.
  std::span<BYTE> Front(std::size_t size);

 private:
  void Reset();

  // Its pointer stays null.
  _StationTuneInfo m_station = {};
  TaskBlock m_block;
  std::size_t m_kept = 0;
};

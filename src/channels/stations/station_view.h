#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/interfaces.h"
#include "core/station_blocks/bytes.h"

/// What can be read of a station. Words that lie outside its block have no value.
struct StationView {
  LONG physicalChannel = 0;
  DWORD frequency = 0;
  LONG transportStream = 0;
  std::span<const BYTE> bytes;
  /// Whole size of the block; 0: no block. Bytes behind `bytes` read as zero.
  std::size_t blockSize = 0;

  /// The station as the byte count in it describes it.
  static StationView Of(const _StationTuneInfo& station);
  /// The 32-bit value at a byte offset of the block. In here because a function answers such an
  /// optional by way of memory, which makes the processor wait until all that was just written to a
  /// block has arrived there.
  std::optional<std::uint32_t> Word(std::size_t offset) const {
    constexpr std::size_t kWidth = 4;
    if (blockSize < kWidth || offset > blockSize - kWidth) return std::nullopt;
    if (offset >= bytes.size()) return 0;
    return station_blocks::Fetch(bytes.data() + offset, std::min(kWidth, bytes.size() - offset));
  }
};

// Stations and the blocks behind them: copying, owning, and reading fields without leaving the
// block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/interfaces.h"

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
  /// The 32-bit value at a byte offset of the block.
  std::optional<std::uint32_t> Word(std::size_t offset) const;
};

/// Owns a station with its block (task memory).
class StationInfo {
 public:
  StationInfo() = default;
  StationInfo(const StationInfo&) = delete;
  StationInfo& operator=(const StationInfo&) = delete;
  ~StationInfo() { Reset(); }

  /// Frees what is there and copies a station for a record of that signal type: the new block has
  /// the type's size, takes at most that much of the source's, and is zero behind it; the byte
  /// count never exceeds it; the station gets the type. A null source block copies nothing. E_FAIL,
  /// and a zeroed station, for a type without a block or without memory.
  HRESULT Assign(const _StationTuneInfo& source, InputSignalType signalType);
  void Reset();

  const _StationTuneInfo& Get() const { return m_station; }
  _StationTuneInfo& Fields() { return m_station; }
  /// The whole block as Assign made it, however much of it was filled; empty without one. Not for
  /// stations that came through Receive.
  std::span<BYTE> Block();
  std::span<const BYTE> Block() const;

  /// Gives the station and its block to the caller.
  _StationTuneInfo Release();
  /// Empties itself and is the place where a getter stores its station.
  _StationTuneInfo* Receive() {
    Reset();
    return &m_station;
  }

 private:
  _StationTuneInfo m_station = {};
};

#pragma once

#include <span>

#include "core/interfaces.h"

/// A station with a block of its own (task memory), as a record of its signal type keeps it.
class OwnedStation {
 public:
  OwnedStation() = default;
  OwnedStation(const OwnedStation&) = delete;
  OwnedStation& operator=(const OwnedStation&) = delete;
  ~OwnedStation() { Reset(); }

  /// Frees what is there and copies a station for a record of that signal type: the new block has
  /// the type's size, takes at most that much of the source's, and is zero behind it; the byte
  /// count never exceeds it; the station gets the type. A null source block copies nothing. E_FAIL
  /// for a type without a block. Lack of memory is raised (std::bad_alloc). Both leave a zeroed
  /// station.
  HRESULT Assign(const _StationTuneInfo& source, InputSignalType signalType);
  void Reset();

  const _StationTuneInfo& Get() const { return m_station; }
  _StationTuneInfo& Fields() { return m_station; }
  /// The whole block as Assign made it, however much of it was filled; empty without one.
  std::span<BYTE> Block();
  std::span<const BYTE> Block() const;

  /// Gives the station and its block to the caller.
  _StationTuneInfo Release();

 private:
  _StationTuneInfo m_station = {};
};

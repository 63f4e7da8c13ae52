// The record of a station.
#pragma once

#include "core/interfaces/enumerations.h"
#include "platform/com.h"

/// How a station is tuned. `pbInformation` is the station block of `InputSignal`'s type: its layout
/// and size are in station_blocks.h, its memory comes from CoTaskMemAlloc.
struct _StationTuneInfo {
  InputSignalType InputSignal;
  LONG lCountry;          ///< country code, the host's
  LONG lPhysicalChannel;  ///< RF channel; this is the record's channel number
  DWORD dwFrequency;      ///< in the host's unit; stored unchanged
  LONG lOffsetFreq;       ///< in the host's unit
  LONG lTSID;             ///< transport stream identifier
  DWORD cbInformation;    ///< bytes of the block
  BYTE* pbInformation;    ///< null: no block
};
static_assert(sizeof(_StationTuneInfo) == 40);

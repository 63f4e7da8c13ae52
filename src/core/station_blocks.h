// The station blocks: the type-specific bytes behind _StationTuneInfo::pbInformation. One table per
// kind of signal says where each value stands, how wide it is and under which attribute the channel
// file keeps it. Records, codecs, the command-line host and hosts share these tables. The headers
// in station_blocks/ hold one kind each; this one includes them all and is the one to include.
//
// All numbers are little-endian. Bytes that no row names are the host's own and are kept at zero by
// the library. Nothing here depends on alignment: read and write through Fetch and Store.
#pragma once

#include "core/interfaces.h"
#include "core/station_blocks/analogue.h"
#include "core/station_blocks/atsc.h"
#include "core/station_blocks/bytes.h"
#include "core/station_blocks/dvb_handheld.h"
#include "core/station_blocks/dvb_satellite.h"
#include "core/station_blocks/dvb_terrestrial.h"
#include "core/station_blocks/fm_radio.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/one_seg.h"
#include "core/station_blocks/streams.h"
#include "core/station_blocks/tdmb.h"

namespace station_blocks {

/// The layout of a signal type; null where stations have no block (composite, S-Video, AM, DVB-C,
/// the three ISDB types, unknown).
constexpr const Layout* Find(InputSignalType signalType) {
  switch (signalType) {
    case InputSignalAnalogAntenna:
    case InputSignalAnalogCable:
      return &kAnalog;
    case InputSignalFMRadio:
      return &kFmRadio;
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
      return &kAtsc;
    case InputSignalDVBSatellite:
      return &kDvbs;
    case InputSignalDVBTerrestrial:
      return &kDvbt;
    case InputSignalDVBHandheld:
      return &kDvbh;
    case InputSignalTDMBMobile:
      return &kTdmb;
    case InputSignalISDBTerrestrialOneSeg:
      return &kOneSeg;
    default:
      return nullptr;
  }
}

}  // namespace station_blocks

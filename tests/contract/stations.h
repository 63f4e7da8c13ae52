// Stations with something in every place that the channel file keeps, and their comparison.
#pragma once

#include <source_location>
#include <string>
#include <vector>

#include "contract/database.h"

/// A station with its block.
struct Station {
  _StationTuneInfo info = {};
  std::vector<BYTE> block;
};

/// A channel as a host sees it.
struct Channel {
  Station station;
  std::basic_string<OLECHAR> displayName;
  UINT index = 0;
  UINT favorite = 0;
  BOOL lock = 0;
};

/// Signal types whose stations have a block.
inline constexpr InputSignalType kBlockTypes[] = {
    InputSignalAnalogAntenna,         InputSignalAnalogCable, InputSignalFMRadio,
    InputSignalATSCAntenna,           InputSignalATSCCable,   InputSignalDVBSatellite,
    InputSignalDVBTerrestrial,        InputSignalDVBHandheld, InputSignalTDMBMobile,
    InputSignalISDBTerrestrialOneSeg,
};

/// A channel of the type, every value different for every `index`. It is what comes back after a
/// save and a load: places that the file does not keep, or reads as something else, are zero.
Channel MakeChannel(InputSignalType signalType, UINT index);

/// Puts a channel into the list. A failure is reported.
ComPtr<IChannelInfo> Add(const ComPtr<IChannelInfoMgr>& list, const Channel& channel);

/// Adds `count` made channels, numbered from 1.
void AddMade(const ComPtr<IChannelInfoMgr>& list, InputSignalType signalType, UINT count);

/// What a record answers.
Channel Fetch(const ComPtr<IChannelInfo>& record);

void ExpectChannel(const Channel& expected, const Channel& actual,
                   std::source_location where = std::source_location::current());

/// Expects the list to hold exactly `count` made channels, numbered from 1.
void ExpectMade(const ComPtr<IChannelInfoMgr>& list, InputSignalType signalType, UINT count,
                std::source_location where = std::source_location::current());

#pragma once

#include <vector>

#include "core/station_blocks.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

/// Everything that an IChannelInfo holds, by value.
struct Channel {
  UINT index = 0;
  UINT number = 0;
  DWORD frequency = 0;
  LONG offset = 0;
  LONG tsid = 0;
  UINT favorite = 0;
  BOOL lock = 0;
  WideText displayName;
  std::vector<BYTE> block;  ///< empty where the record has none

  // These follow from the block.
  WideText name;
  EServiceType serviceType = ServiceUnknown;  ///< ServiceUnknown: the record names none
  BOOL scrambled = 0;
  BOOL mhp = 0;
};

/// Copies a record. Raises a Failure when it cannot be asked.
Channel ReadChannel(IChannelInfo* record);

/// Stores the station, the names and the marks in a record, not the index. An empty display name is
/// filled from the station by the record.
void WriteChannel(const Channel& channel, InputSignalType signal, IChannelInfo* record);

/// Name of the first thing that differs; null when nothing does.
const char* FirstDifference(const Channel& a, const Channel& b,
                            const station_blocks::Layout* layout);

/// True when nothing differs, place by place.
bool SameChannels(const std::vector<Channel>& a, const std::vector<Channel>& b);

/// The stored places of a channel that are numbers of the record and not of its block.
std::uint32_t SourceValue(const Channel& channel, station_blocks::Source source);
void SetSourceValue(Channel& channel, station_blocks::Source source, std::uint32_t value);

}  // namespace zortunedex::kit

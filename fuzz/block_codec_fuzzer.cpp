// The channel codecs from any block to an element and back. The first byte chooses the signal type,
// the rest is the block, whose end may be missing.
#include <vector>

#include "channels/chan_info.h"
#include "support/codec.h"
#include "support/fuzz.h"

void Fuzz(const BYTE* data, std::size_t size) {
  if (size == 0) return;
  const InputSignalType signalType = BlockType(data[0]);
  std::vector<BYTE> block(data + 1, data + size);
  _StationTuneInfo station = {};
  station.cbInformation = static_cast<DWORD>(block.size());
  station.pbInformation = block.data();
  ComPtr<IChannelInfo> channel;
  Require(CChanInfo::CreateInstance(channel.Receive()) == S_OK);
  channel->SetSignalType(signalType);
  channel->SetChannelIndex(static_cast<UINT>(size));
  Require(channel->SetStationInfo(&station) == S_OK);
  RequireStable(channel.Get(), signalType);
  RequireSavedIsLoaded(Scratch::Emptied(), WriteElement(channel.Get()));
}

// The channels that everything is measured with: satellite channels with one video, two audio, one
// teletext and one subtitle stream and satellite parameters, about 1 KB of XML each.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/interfaces.h"

namespace bench {

struct Stream {
  unsigned type;
  unsigned pid;
  unsigned language;
};

struct ChannelData {
  UINT index;
  std::string name;
  std::string network;
  DWORD frequency;
  unsigned serviceType;
  unsigned serviceId;
  unsigned transportStream;
  unsigned access;
  unsigned favorite;
  bool vertical;
  unsigned symbolRate;
  Stream video;
  std::array<Stream, 2> audio;
  Stream teletext;
  Stream subtitle;
};

/// The channel with this index, from 1.
ChannelData MakeChannelData(UINT index);

/// The station block of a channel.
std::vector<BYTE> MakeBlock(const ChannelData& channel);

/// ChanInfo.xml with channels 1 to `count`, byte for byte as the library writes it.
std::string MakeChannelFile(UINT count);

/// Adds channels 1 to `count` to an empty list, as a host does behind a scan.
void FillList(IChannelInfoMgr* list, UINT count);

}  // namespace bench

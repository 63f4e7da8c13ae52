// Any bytes as a playlist: whatever it says, the list keeps its channels.
#include <algorithm>

#include "kit/model/channel_layout.h"
#include "support/exchange.h"

using namespace zortunedex::kit;

namespace {

std::vector<Channel> SomeChannels() {
  std::vector<Channel> channels;
  for (UINT i = 1; i <= 5; ++i) {
    Channel channel = EmptyChannel(LayoutOf(InputSignalDVBSatellite));
    channel.index = i;
    station_blocks::Store(channel.block.data() + 4, 4, i);
    // Two share a name.
    channel.displayName = WideText(1, static_cast<OLECHAR>('A' + i / 2));
    channels.push_back(channel);
  }
  return channels;
}

}  // namespace

void Fuzz(const BYTE* data, std::size_t size) {
  static const ExchangedList list(InputSignalDVBSatellite);
  static const std::vector<Channel> channels = SomeChannels();
  interchange::Input input;
  input.bytes.assign(reinterpret_cast<const char*>(data), size);
  try {
    const interchange::Import made =
        interchange::ImportChannels(*interchange::FindFormat("m3u"), input,
                                    {list.Context(), channels}, interchange::Into::Append);
    std::vector<std::uint32_t> services;
    UINT last = 0;
    for (const Channel& channel : made.table.channels) {
      Require(channel.index > last);
      last = channel.index;
      services.push_back(station_blocks::Fetch(channel.block.data() + 4, 4));
    }
    std::ranges::sort(services);
    Require(services == std::vector<std::uint32_t>{1, 2, 3, 4, 5});
  } catch (const Failure&) {
    // It is no playlist.
  }
}

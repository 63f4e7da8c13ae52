#include "kit/failure.h"
#include "kit/model/channel_list.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/channel_view.h"

namespace commands {
namespace {

void Step(const Options& options, bool forward) {
  const ChannelList list(LocationOf(options));
  const UINT index = options.indexes.front();
  // 0 stands in front of the first channel.
  const UINT position = forward && index == 0 ? 0 : list.PositionOf(index);
  UINT found = 0;
  Require(
      list.Step(position, forward, options.services, options.favoritesOnly, options.loop, found),
      "no such channel " + std::string(forward ? "behind" : "before") + " index " +
          std::to_string(index));
  channel_view::Print({list.Channels().at(found - 1)}, options.json);
}

}  // namespace

void ListChannels(const Options& options) {
  const ChannelList list(LocationOf(options));
  std::vector<Channel> channels;
  for (const UINT position : list.Positions(options.services)) {
    channels.push_back(list.Channels().at(position - 1));
  }
  channel_view::Print(channels, options.json);
}

void ShowChannel(const Options& options) {
  const ChannelList list(LocationOf(options));
  const Channel& channel = list.Find(options.indexes.front());
  channel_view::PrintWhole(channel, *options.signal, NarrowText(list.Source()), options.json);
}

void NextChannel(const Options& options) { Step(options, true); }
void PreviousChannel(const Options& options) { Step(options, false); }

void FindChannel(const Options& options) {
  const ChannelList list(LocationOf(options));
  const Channel& channel =
      options.number ? list.FindNumber(*options.number) : list.FindLike(*options.like);
  channel_view::Print({channel}, options.json);
}

}  // namespace commands

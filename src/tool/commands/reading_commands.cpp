#include "kit/failure.h"
#include "kit/model/channel_list.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/channel_view.h"

namespace zortunedex::kit::tool::commands {
namespace {

void PrintOne(const Channel& channel, const ChannelList& list, const Options& options) {
  if (!options.json) return channel_view::PrintTable({channel});
  channel_view::PrintJson({channel}, *options.signal, NarrowText(list.Source()));
}

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
  PrintOne(list.Channels().at(found - 1), list, options);
}

}  // namespace

void ListChannels(const Options& options) {
  const ChannelMatcher matcher(options.filter, *options.signal);
  std::vector<ChannelField> columns;
  for (const std::string& name : options.columns) columns.emplace_back(*options.signal, name);
  const ChannelList list(LocationOf(options));
  const NarrowText narrow(list.Source());
  const std::vector<Channel> channels = matcher.Matching(list.Channels(), narrow);
  if (options.json) return channel_view::PrintJson(channels, *options.signal, narrow);
  if (columns.empty()) return channel_view::PrintTable(channels);
  channel_view::PrintTable(channels, columns, narrow);
}

void ShowChannel(const Options& options) {
  const ChannelMatcher matcher(options.filter, *options.signal);
  const ChannelList list(LocationOf(options));
  const NarrowText narrow(list.Source());
  const std::vector<Channel> channels = matcher.Chosen(list.Channels(), narrow);
  options.json ? channel_view::PrintJson(channels, *options.signal, narrow)
               : channel_view::PrintWhole(channels, *options.signal, narrow);
}

void NextChannel(const Options& options) { Step(options, true); }
void PreviousChannel(const Options& options) { Step(options, false); }

void FindChannel(const Options& options) {
  const ChannelList list(LocationOf(options));
  PrintOne(options.number ? list.FindNumber(*options.number) : list.FindLike(*options.like), list,
           options);
}

}  // namespace zortunedex::kit::tool::commands

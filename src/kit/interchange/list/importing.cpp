#include "kit/interchange/list/importing.h"

#include "kit/failure.h"
#include "kit/interchange/list/comparison.h"
#include "kit/saving/stored_form.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::interchange {
namespace {

bool Ascend(const std::vector<ImportedChannel>& channels) {
  UINT last = 0;
  for (const ImportedChannel& imported : channels) {
    // The highest number stands for no index.
    if (imported.channel.index <= last || imported.channel.index == UINT32_MAX) return false;
    last = imported.channel.index;
  }
  return true;
}

/// `given` holds the indexes that the file says: of the others nothing is lost.
void Renumber(std::vector<ImportedChannel>& channels, const std::vector<UINT>& given, UINT first,
              Losses& losses) {
  for (std::size_t i = 0; i < channels.size(); ++i) {
    ImportedChannel& imported = channels[i];
    imported.channel.index = first + static_cast<UINT>(i);
    const UINT was = given[i];
    if (was == 0 || was == imported.channel.index) continue;
    losses.Add(Code::MarkDropped, "index",
               {was, utf::FromWide(imported.channel.displayName), imported.line}, std::int64_t{was},
               std::int64_t{imported.channel.index});
  }
}

/// What the channel file keeps of a channel, with a loss for what it does not.
Channel Stored(const ImportedChannel& imported, const ImportRequest& request, IChannelInfoMgr* list,
               Losses& losses) {
  const ListContext& context = request.context;
  Channel stored = AsStored(imported.channel, context.signal, context.narrow, list);
  if (FirstDifference(imported.channel, stored, nullptr) != nullptr) {
    AddDifferences(imported.channel, stored, {context}, losses);
  }
  return stored;
}

}  // namespace

Import ImportChannels(const Format& format, const Input& input, const ImportRequest& request,
                      Into into) {
  const ListContext& context = request.context;
  if (!Holds(format.in, context.signal)) {
    throw Failure{E_NOTIMPL, std::string("the format ") + format.name + " brings no channels of " +
                                 SignalTypeName(context.signal)};
  }
  Import made{{}, 0, 0, std::nullopt, Losses(kMostTold)};
  made.table = {context.country, context.signal, {}};
  ImportResult result = format.read(input, request, made.losses);
  made.read = result.read;
  made.country = result.country;
  made.taken = result.channels.size();
  const bool appends = into == Into::Append && !result.isWhole;
  if (appends) made.table.channels = request.current;
  const UINT last = made.table.channels.empty() ? 0 : made.table.channels.back().index;
  std::vector<UINT> given;
  for (const ImportedChannel& imported : result.channels) given.push_back(imported.channel.index);
  FillIndexes(result.channels);
  if (appends || !Ascend(result.channels)) Renumber(result.channels, given, last + 1, made.losses);
  const ComPtr<IChannelInfoMgr> list = context.database.List(context.signal);
  for (ImportedChannel& imported : result.channels) {
    made.table.channels.push_back(Stored(imported, request, list.Get(), made.losses));
    imported = {};
  }
  return made;
}

}  // namespace zortunedex::kit::interchange

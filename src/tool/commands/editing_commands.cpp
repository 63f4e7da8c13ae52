#include <algorithm>
#include <iostream>

#include "kit/failure.h"
#include "kit/model/channel_layout.h"
#include "kit/model/field_setter.h"
#include "kit/saving/list_editor.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/channel_view.h"
#include "tool/printing/output.h"

namespace commands {
namespace {

using station_blocks::Source;

SaveOptions HowToSave(const Options& options) {
  return {options.format, PrintNote, options.unreadable};
}

/// Changes the one channel of the command line and saves.
template <typename Change>
void EditOne(const Options& options, Change change) {
  ListEditor editor(LocationOf(options), HowToSave(options));
  Channel channel = editor.Before().Find(options.indexes.front());
  change(editor, channel);
  editor.Put(channel);
  editor.Save();
  if (options.json) channel_view::Print({editor.After(channel.index)}, true);
}

/// Saves and, for JSON, prints the list that is left.
void SaveAll(ListEditor& editor, const Options& options) {
  editor.Save();
  if (options.json) channel_view::Print(editor.After(), true);
}

}  // namespace

void AddChannel(const Options& options) {
  Channel channel = EmptyChannel(LayoutOf(*options.signal));
  ListEditor editor(LocationOf(options), HowToSave(options));
  const FieldSetter setter(*options.signal, editor.Narrow());
  for (const Assignment& assignment : options.assignments) setter.Set(channel, assignment);
  const UINT index = editor.Add(channel);
  editor.Save();
  if (options.json) return channel_view::Print({editor.After(index)}, true);
  std::cout << index << '\n';
}

void SetChannel(const Options& options) {
  EditOne(options, [&options](const ListEditor& editor, Channel& channel) {
    const FieldSetter setter(editor.Signal(), editor.Narrow());
    for (const Assignment& assignment : options.assignments) setter.Set(channel, assignment);
  });
}

void RenameChannel(const Options& options) {
  EditOne(options, [&options](const ListEditor& editor, Channel& channel) {
    const FieldSetter setter(editor.Signal(), editor.Narrow());
    if (options.renameTarget != RenameTarget::DisplayOnly) {
      setter.Set(channel, {"name", options.name, Source::Name});
    }
    if (options.renameTarget != RenameTarget::NameOnly) {
      setter.Set(channel, {"nameDisplay", options.name, Source::DisplayName});
    }
  });
}

void FavorChannel(const Options& options) {
  EditOne(options, [&options](const ListEditor&, Channel& channel) {
    channel.favorite = options.mark.value_or(1);
  });
}

void LockChannel(const Options& options) {
  EditOne(options, [&options](const ListEditor&, Channel& channel) {
    channel.lock = static_cast<BOOL>(options.mark.value_or(1));
  });
}

void RemoveChannels(const Options& options) {
  ListEditor editor(LocationOf(options), HowToSave(options));
  std::vector<UINT> indexes = options.indexes;
  std::sort(indexes.begin(), indexes.end());
  indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
  // All are looked up before the first removal numbers the rest afresh.
  std::vector<ComPtr<IChannelInfo>> records;
  records.reserve(indexes.size());
  for (const UINT index : indexes) records.push_back(RecordAt(editor.List(), index));
  for (const ComPtr<IChannelInfo>& record : records) {
    Require(editor.List()->RemoveChannelInfo(record.Get()), "a channel cannot be removed");
  }
  SaveAll(editor, options);
}

void MoveChannel(const Options& options) {
  ListEditor editor(LocationOf(options), HowToSave(options));
  const UINT from = options.indexes[0];
  const UINT to = options.indexes[1];
  RecordAt(editor.List(), from);
  Require(editor.List()->MoveChannel(from, to),
          "channel " + std::to_string(from) + " cannot be moved to " + std::to_string(to));
  SaveAll(editor, options);
}

void SortChannels(const Options& options) {
  ListEditor editor(LocationOf(options), HowToSave(options));
  Require(editor.List()->SortChannel(options.sort, !options.descending),
          "the list cannot be sorted");
  SaveAll(editor, options);
}

}  // namespace commands

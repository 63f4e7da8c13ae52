#include <iostream>

#include "kit/model/channel_layout.h"
#include "tool/commands/channel_edits.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/channel_view.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool::commands {
namespace {

/// Opens the list, changes it and saves it; for JSON, prints the channels that were changed, and
/// all of them where they were numbered afresh.
void Change(const Options& options, channel_edits::Edit edit) {
  ListEditor editor(LocationOf(options), {options.format, PrintNote, options.unreadable});
  const channel_edits::Done done = edit(editor, options);
  editor.Save();
  if (options.json) {
    std::vector<Channel> channels;
    for (const UINT index : done.indexes) channels.push_back(editor.After(index));
    return channel_view::PrintJson(done.renumbered ? editor.After() : channels, editor.Signal(),
                                   editor.Narrow());
  }
  if (!done.text.empty()) std::cout << done.text << '\n';
}

}  // namespace

void AddChannel(const Options& options) {
  LayoutOf(*options.signal);  // whether the file can hold it is told before anything is opened
  Change(options, channel_edits::Add);
}
void SetChannel(const Options& options) { Change(options, channel_edits::Set); }
void EditChannels(const Options& options) { Change(options, channel_edits::EditMatching); }
void RenameChannel(const Options& options) { Change(options, channel_edits::Rename); }
void FavorChannel(const Options& options) { Change(options, channel_edits::Favor); }
void LockChannel(const Options& options) { Change(options, channel_edits::Lock); }
void RemoveChannels(const Options& options) { Change(options, channel_edits::Remove); }
void MoveChannel(const Options& options) { Change(options, channel_edits::Move); }
void SortChannels(const Options& options) { Change(options, channel_edits::Sort); }

}  // namespace zortunedex::kit::tool::commands

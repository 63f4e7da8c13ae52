#include "tool/commands/channel_edits.h"

#include "kit/model/channel_layout.h"
#include "kit/model/field_setter.h"

namespace zortunedex::kit::tool {

using station_blocks::Source;

namespace channel_edits {
namespace {

std::vector<Channel> Chosen(ListEditor& editor, const Options& options) {
  return ChannelMatcher(options.filter, editor.Signal()).Chosen(editor.Now(), editor.Narrow());
}

/// Stores what `change` makes of the channels.
template <typename Change>
Done ChangeEach(ListEditor& editor, std::vector<Channel> channels, Change change) {
  Done done;
  for (Channel& channel : channels) {
    const Channel before = channel;
    change(channel);
    done.indexes.push_back(channel.index);
    if (FirstDifference(before, channel, nullptr) == nullptr) continue;
    editor.Put(channel);
    ++done.changed;
  }
  return done;
}

void Assign(const Options& options, const FieldSetter& setter, Channel& channel) {
  for (const Assignment& assignment : options.assignments) setter.Set(channel, assignment);
}

Done Renumbered() {
  Done done;
  done.renumbered = true;
  return done;
}

struct NamedEdit {
  std::string_view name;
  Edit edit;
};

constexpr NamedEdit kEdits[] = {
    {"channels add", Add},       {"channels set", Set},     {"channels edit", EditMatching},
    {"channels rename", Rename}, {"channels favor", Favor}, {"channels lock", Lock},
    {"channels remove", Remove}, {"channels move", Move},   {"channels sort", Sort},
};

}  // namespace

Done Add(ListEditor& editor, const Options& options) {
  Channel channel = EmptyChannel(LayoutOf(editor.Signal()));
  Assign(options, FieldSetter(editor.Signal(), editor.Narrow()), channel);
  const UINT index = editor.Add(channel);
  return {{index}, false, 1, std::to_string(index)};
}

Done Set(ListEditor& editor, const Options& options) {
  std::vector<Channel> channels = Chosen(editor, options);
  const FieldSetter setter(editor.Signal(), editor.Narrow());
  return ChangeEach(editor, std::move(channels),
                    [&](Channel& channel) { Assign(options, setter, channel); });
}

Done EditMatching(ListEditor& editor, const Options& options) {
  Done done = Set(editor, options);
  const std::size_t same = done.indexes.size() - done.changed;
  done.text =
      std::to_string(done.changed) + (done.changed == 1 ? " channel" : " channels") + " changed";
  if (same != 0) done.text += ", " + std::to_string(same) + " had the values already";
  return done;
}

Done Rename(ListEditor& editor, const Options& options) {
  const FieldSetter setter(editor.Signal(), editor.Narrow());
  return ChangeEach(editor, {editor.Find(options.indexes.front())}, [&](Channel& channel) {
    if (options.renameTarget != RenameTarget::DisplayOnly) {
      setter.Set(channel, {"name", options.name, Source::Name});
    }
    if (options.renameTarget != RenameTarget::NameOnly) {
      setter.Set(channel, {"nameDisplay", options.name, Source::DisplayName});
    }
  });
}

Done Favor(ListEditor& editor, const Options& options) {
  return ChangeEach(editor, Chosen(editor, options),
                    [&](Channel& channel) { channel.favorite = options.mark; });
}

Done Lock(ListEditor& editor, const Options& options) {
  return ChangeEach(editor, Chosen(editor, options),
                    [&](Channel& channel) { channel.lock = static_cast<BOOL>(options.mark); });
}

Done Remove(ListEditor& editor, const Options& options) {
  std::vector<UINT> indexes;
  for (const Channel& channel : Chosen(editor, options)) indexes.push_back(channel.index);
  editor.Remove(indexes);
  return Renumbered();
}

Done Move(ListEditor& editor, const Options& options) {
  editor.Move(options.indexes[0], options.indexes[1]);
  return Renumbered();
}

Done Sort(ListEditor& editor, const Options& options) {
  editor.Sort(options.sort, !options.descending);
  return Renumbered();
}

Edit Find(std::string_view command) {
  for (const NamedEdit& known : kEdits) {
    if (known.name == command) return known.edit;
  }
  return nullptr;
}

}  // namespace channel_edits

}  // namespace zortunedex::kit::tool

#include "tool/options/groups/channel_options.h"

#include <algorithm>
#include <utility>

#include "kit/model/channel_layout.h"
#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"
#include "tool/options/groups/exchange_options.h"
#include "tool/options/groups/merge_options.h"
#include "tool/options/groups/option_helpers.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

using station_blocks::Source;

constexpr const char* kIndexHelp =
    "INDEX is the stored index of a channel, a range of them, or several behind commas:\n"
    "7 3-9,12. A single index, and both ends of a range, must be there. Channels are taken in\n"
    "the order of the list, each once, however often and in whatever order they are named.";

constexpr const char* kFilterHelp =
    "All conditions that are given must hold. --where takes the fields of\n"
    "'channels show --json': number, displayName, symbolRate, block.serviceType,\n"
    "AudioStream[1].pid.";

constexpr const char* kSetHelp =
    "--set takes the attributes of the signal type as 'channels show' prints them:\n"
    "  --set serviceID=101 --set networkName=ASTRA --set polarisation=LinearH\n"
    "Entries of lists are counted from 1; a list grows as far as it has to:\n"
    "  --set AudioStream[1].pid=257 --set Components[2].name=data\n"
    "A smaller count drops the last entries: --set numOfAudioStreams=0\n"
    "Numbers are decimal or 0x and hexadecimal digits. The words of polarisation, innerFECRate,\n"
    "modulation and spectralInversion are those of the file: LinearH, 3/4, QPSK, automatic.\n"
    "Component_index of T-DMB is written and reads back as 0, here as everywhere.";

/// Adds paragraphs below the options.
void AddHelp(CLI::App* app, const std::string& text) {
  const std::string before = app->get_footer();
  app->footer(before.empty() ? text : before + "\n" + text);
}

/// FIELD=VALUE at its first equals sign.
std::pair<std::string, std::string> Split(const std::string& option, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    throw CLI::ValidationError(option, "'" + text + "' is not FIELD=VALUE");
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

/// An option that can be given more than once, each time with one value.
template <typename Take>
CLI::Option* AddRepeatable(CLI::App* app, const std::string& name, const std::string& type,
                           const std::string& help, Take take) {
  const auto all = [take](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) take(text);
  };
  return app->add_option_function<std::vector<std::string>>(name, all, help)
      ->type_name(type)
      ->allow_extra_args(false);
}

CLI::Option* AddSet(CLI::App* app, Options& options) {
  AddHelp(app, kSetHelp);
  return AddRepeatable(app, "--set", "FIELD=VALUE", "any attribute; repeatable",
                       [&options](const std::string& text) {
                         const auto [field, value] = Split("--set", text);
                         options.assignments.push_back({field, value});
                       });
}

/// Options that become assignments, and --set itself.
void AddFields(CLI::App* app, Options& options) {
  const auto add = [app, &options](const char* name, Source source, const char* help) {
    app->add_option_function<std::string>(
           name,
           [&options, source, name](const std::string& value) {
             options.assignments.push_back({name, value, source});
           },
           help)
        ->type_name("");
  };
  add("--name", Source::Name, "name in the station block");
  add("--display-name", Source::DisplayName, "display name; an empty one is filled from the name");
  add("--number", Source::PhysicalChannel, "physical channel");
  add("--freq", Source::Frequency, "frequency in the file's unit");
  AddSet(app, options);
}

template <typename Mask>
void AddServices(CLI::App* app, Mask& services) {
  AddWord(app, "--service", "tv, radio, data, other, all or a mask",
          [&services](const std::string& text) {
            const std::optional<DWORD> mask = ParseServiceMask(text);
            if (mask) services = *mask;
            return mask.has_value();
          });
}

void TakeRanges(const std::string& name, const std::string& text, Options& options) {
  const std::optional<std::vector<IndexRange>> ranges = ParseIndexRanges(text);
  if (!ranges) {
    const bool mark = text == "on" || text == "off";
    throw CLI::ValidationError(name, "'" + text + "' is no index and no range of indexes" +
                                         (mark ? "; a mark is taken away by --off" : ""));
  }
  options.filter.indexes.insert(options.filter.indexes.end(), ranges->begin(), ranges->end());
}

/// INDEX... and --all.
void AddChosen(CLI::App* app, Options& options) {
  const auto take = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) TakeRanges("INDEX", text, options);
  };
  CLI::Option* index =
      app->add_option_function<std::vector<std::string>>(
             "INDEX", take, "stored indexes of channels: 7, 3-9 or 3-9,12; several words")
          ->type_name("");
  app->add_flag("--all", options.filter.all, "every channel")->excludes(index);
  AddHelp(app, kIndexHelp);
}

void AddFilters(CLI::App* app, Options& options) {
  const auto name = [&options](const std::string& text) {
    if (text.empty()) throw CLI::ValidationError("--name", "an empty text is in every name");
    options.filter.name = text;
  };
  app->add_option_function<std::string>(
         "--name", name, "with this in the name or the display name, in capitals or small letters")
      ->type_name("TEXT");
  app->add_flag("--favorites", options.filter.favorites, "favourites");
  app->add_flag("--locked", options.filter.locked, "locked channels");
  AddServices(app, options.filter.services);
  AddRepeatable(app, "--index", "RANGES", "with these stored indexes: 3-9,12; repeatable",
                [&options](const std::string& text) { TakeRanges("--index", text, options); });
  AddRepeatable(app, "--where", "FIELD=VALUE", "with this value; repeatable, all must hold",
                [&options](const std::string& text) {
                  const auto [field, value] = Split("--where", text);
                  options.filter.where.push_back({field, value});
                });
  AddHelp(app, kFilterHelp);
}

void AddNavigation(CLI::App* channels, Options& options, const char* name, const char* help) {
  CLI::App* step = channels->add_subcommand(name, help);
  AddIndexes(step, options, 1, 1);
  AddServices(step, options.services);
  step->add_flag("--favorites", options.favoritesOnly, "favourites only");
  step->add_flag("--loop", options.loop, "go on from the other end");
}

/// Fields behind commas. A bracket holds none.
void TakeColumns(const std::string& text, Options& options) {
  for (std::size_t first = 0; first <= text.size();) {
    const std::size_t end = std::min(text.find(',', first), text.size());
    if (end == first) throw CLI::ValidationError("--columns", "'" + text + "' lacks a field");
    options.columns.push_back(text.substr(first, end - first));
    first = end + 1;
  }
}

void AddReadingCommands(CLI::App* channels, Options& options) {
  CLI::App* list = channels->add_subcommand("list", "List the channels");
  AddFilters(list, options);
  AddRepeatable(list, "--columns", "FIELD,...", "these fields instead of the usual columns",
                [&options](const std::string& text) { TakeColumns(text, options); });
  CLI::App* show = channels->add_subcommand("show", "Show everything about channels");
  AddChosen(show, options);
  AddFilters(show, options);
  AddNavigation(channels, options, "next", "Find the channel behind another; 0: the first");
  AddNavigation(channels, options, "previous", "Find the channel before another");
  CLI::App* find = channels->add_subcommand("find", "Find the first channel of a kind");
  AddNumber(find, "--number", options.number, "with this channel number");
  AddNumber(find, "--like", options.like, "with the station of the channel with this index");
}

void AddMarks(CLI::App* channels, Options& options) {
  const auto addOff = [&options](CLI::App* app, const char* help) {
    return app->add_flag_function(
        "--off", [&options](std::int64_t) { options.mark = 0; }, help);
  };
  CLI::App* favor = channels->add_subcommand("favor", "Mark favourites");
  AddChosen(favor, options);
  AddFilters(favor, options);
  const auto mark = [&options](const std::string& text) {
    const std::optional<std::int64_t> value = ParseNumber(text, 0, UINT32_MAX);
    if (!value) throw CLI::ValidationError("--mark", "'" + text + "' is no number of 32 bits");
    options.mark = static_cast<UINT>(*value);
  };
  CLI::Option* off = addOff(favor, "take the mark away");
  favor->add_option_function<std::string>("--mark", mark, "mark; 1 unless given")
      ->type_name("NUMBER")
      ->excludes(off);
  CLI::App* lock = channels->add_subcommand("lock", "Lock channels");
  AddChosen(lock, options);
  AddFilters(lock, options);
  addOff(lock, "unlock them");
}

void AddEditingCommands(CLI::App* channels, Options& options) {
  AddFields(channels->add_subcommand("add", "Add a channel at the end"), options);
  CLI::App* set = channels->add_subcommand("set", "Change channels");
  AddChosen(set, options);
  AddFields(set, options);
  CLI::App* edit = channels->add_subcommand("edit", "Change the channels that a filter chooses");
  edit->add_flag("--all", options.filter.all, "every channel");
  AddFilters(edit, options);
  AddSet(edit, options)->required();
  CLI::App* remove = channels->add_subcommand("remove", "Remove channels; the rest is renumbered");
  AddChosen(remove, options);
  AddFilters(remove, options);
  CLI::App* rename = channels->add_subcommand("rename", "Give a channel a name");
  AddIndexes(rename, options, 1, 1);
  rename->add_option("NAME", options.name, "new name")->type_name("")->required();
  const auto only = [&options](RenameTarget target) {
    return [&options, target](std::int64_t) { options.renameTarget = target; };
  };
  CLI::Option* nameOnly = rename->add_flag_function("--name-only", only(RenameTarget::NameOnly),
                                                    "keep the display name");
  rename
      ->add_flag_function("--display-only", only(RenameTarget::DisplayOnly),
                          "keep the name in the station block")
      ->excludes(nameOnly);
  AddMarks(channels, options);
  CLI::App* move = channels->add_subcommand("move", "Move a channel: OLD index, NEW index");
  AddIndexes(move, options, 2, 2);
  CLI::App* sort = channels->add_subcommand("sort", "Sort and number the list afresh");
  const auto key = [&options](const std::string& text) {
    options.sort = text == "number"    ? SortChannelByNo
                   : text == "service" ? SortChannelBySrvType
                                       : SortNone;
    return options.sort != SortNone;
  };
  AddWord(sort, "KEY", "number or service", key);
  sort->get_option("KEY")->required();
  sort->add_flag("--descending", options.descending, "highest first");
}

/// Commands that change or show what is chosen do so for nothing that nobody chose.
void RequireChoice(const Options& options) {
  if (options.filter.all && !options.filter.indexes.empty()) {
    throw UsageError{"--all goes without --index"};
  }
  if (IsGiven(options.filter)) return;
  if (options.command == "channels edit") throw UsageError{"channels edit needs a filter or --all"};
  if (options.command == "channels set") throw UsageError{"channels set needs INDEX or --all"};
  for (const char* verb : {"show", "favor", "lock", "remove"}) {
    if (options.command != std::string("channels ") + verb) continue;
    throw UsageError{options.command + " needs INDEX, a filter or --all"};
  }
}

/// FIELD of --set: what can be shown, or another spelling of an attribute.
void RequireField(InputSignalType signal, const std::string& name) {
  const station_blocks::Layout& layout = LayoutOf(signal);
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    if (station_blocks::FindField(rows, name) != nullptr) return;
  }
  ChannelField(signal, name);
}

}  // namespace

void AddChannelCommands(CLI::App& app, Options& options) {
  CLI::App* channels = app.add_subcommand("channels", "Read and change a list of channels");
  channels->require_subcommand(1);
  AddReadingCommands(channels, options);
  AddEditingCommands(channels, options);
  AddExchangeCommands(channels, options);
  AddMergeCommands(channels, options);
}

void CompleteChannelOptions(const Options& options) {
  if (!options.command.starts_with("channels ")) return;
  if (options.command == "channels find" &&
      options.number.has_value() == options.like.has_value()) {
    throw UsageError{"channels find takes either --number or --like"};
  }
  CompleteExchangeOptions(options);
  RequireChoice(options);
  if (options.command == "channels set" && options.assignments.empty()) {
    throw UsageError{"channels set needs something to set"};
  }
  if (options.json && !options.columns.empty()) {
    throw UsageError{"--columns goes without --json, which prints every field"};
  }
}

void RequireFieldsOfSignal(const Options& options) {
  if (!options.command.starts_with("channels ")) return;
  // A batch may do without them as long as it leaves the channels alone.
  RequireGiven(options.country.has_value(), "--country");
  RequireGiven(options.signal.has_value(), "--signal");
  for (const std::string& column : options.columns) ChannelField(*options.signal, column);
  [[maybe_unused]] const ChannelMatcher filter(options.filter, *options.signal);
  for (const Assignment& assignment : options.assignments) {
    if (assignment.source == Source::Block) RequireField(*options.signal, assignment.field);
  }
}

}  // namespace zortunedex::kit::tool

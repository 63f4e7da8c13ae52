#include "tool/options/groups/preset_options.h"

#include <CLI/CLI.hpp>

#include "kit/text/ascii.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

constexpr DWORD kJapan = 81;

constexpr const char* kSelectHelp =
    "Replaces the one-segment channels of the country (81 unless --country says otherwise) in\n"
    "ChanInfo.xml by those of the sub-area. Asks before channels are replaced; where nobody can "
    "be\n"
    "asked, --yes is needed. The selection is then noted in PreSetChannelInfo.xml; nothing else "
    "in\n"
    "that file changes. Where it cannot be noted the command says so and 'presets current' still\n"
    "knows the sub-area by its channels.";

constexpr const char* kCurrentHelp =
    "Shows the selection that is noted in PreSetChannelInfo.xml and whether the channel list "
    "still\n"
    "has the channels of that sub-area; where it has not, the first sub-area that has them. "
    "Without\n"
    "a note the selection is told by the channels alone: a program that selects keeps no note. "
    "Fails\n"
    "when there is neither a note nor a sub-area with exactly the channels of the list.";

constexpr const char* kSaveHelp =
    "Stores the one-segment channels of the country as a customer list. INDEX is the number of an\n"
    "old list, whose channels are replaced by their index and otherwise stay, or the next free\n"
    "number for a new list.";

void AddPlace(CLI::App* app, Options& options, const char* name, const char* help) {
  const auto take = [&options, name](const std::string& text) {
    const std::optional<std::int64_t> value = ParseNumber(text, 0, INT32_MAX);
    if (!value) throw CLI::ValidationError(name, "'" + text + "' is no number from 0");
    options.places.push_back(static_cast<LONG>(*value));
  };
  app->add_option_function<std::string>(name, take, help)->type_name("")->required();
}

CLI::App* AddOfSubArea(CLI::App* presets, Options& options, const char* name, const char* help) {
  CLI::App* command = presets->add_subcommand(name, help);
  AddPlace(command, options, "AREA", "number of an area");
  AddPlace(command, options, "SUBAREA", "number of a sub-area");
  return command;
}

}  // namespace

void AddPresetCommands(CLI::App& app, Options& options) {
  CLI::App* presets =
      app.add_subcommand("presets", "One-segment presets by area, and the customer's lists");
  presets->require_subcommand(1);
  presets->add_subcommand("areas", "List the areas");
  CLI::App* subAreas = presets->add_subcommand("subareas", "List the sub-areas of an area");
  AddPlace(subAreas, options, "AREA", "number of an area");
  AddOfSubArea(presets, options, "list", "List the channels of a sub-area");
  CLI::App* select =
      AddOfSubArea(presets, options, "select", "Make a sub-area's channels the channel list");
  select->add_flag("--yes", options.yes, "replace channels without asking");
  select->footer(kSelectHelp);
  presets->add_subcommand("current", "Show what is selected")->footer(kCurrentHelp);
  CLI::App* save = presets->add_subcommand("save", "Store the channels as a customer list");
  AddPlace(save, options, "INDEX", "number of the list");
  save->add_option("NAME", options.name, "its name")->type_name("")->required();
  save->footer(kSaveHelp);
  CLI::App* remove =
      presets->add_subcommand("delete", "Delete a customer list; the others move up");
  AddPlace(remove, options, "INDEX", "number of the list");
}

void CompletePresetOptions(Options& options) {
  if (!options.command.starts_with("presets ")) return;
  options.signal = options.signal.value_or(InputSignalISDBTerrestrialOneSeg);
  if (*options.signal != InputSignalISDBTerrestrialOneSeg) {
    throw UsageError{"presets are there for ISDBTerrestrialOneSeg alone"};
  }
  options.country = options.country.value_or(kJapan);
}

}  // namespace zortunedex::kit::tool

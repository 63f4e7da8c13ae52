#include "tool/options/options.h"

#include <algorithm>
#include <iostream>

#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"
#include "tool/options/check_options.h"
#include "tool/options/history_options.h"
#include "tool/options/option_helpers.h"
#include "tool/options/preset_options.h"
#include "tool/options/usage_error.h"

namespace {

using station_blocks::Source;

constexpr const char* kSetHelp =
    "FIELD is an attribute of the signal type as 'channels show' prints it:\n"
    "  --set serviceID=101 --set networkName=ASTRA --set polarisation=LinearH\n"
    "Entries of lists are counted from 1; a list grows as far as it has to:\n"
    "  --set AudioStream[1].pid=257 --set Components[2].name=data\n"
    "A smaller count drops the last entries: --set numOfAudioStreams=0\n"
    "Numbers are decimal or 0x and hexadecimal digits. The words of polarisation, innerFECRate,\n"
    "modulation and spectralInversion are those of the file: LinearH, 3/4, QPSK, automatic.\n"
    "Component_index of T-DMB is written and reads back as 0, here as everywhere.";

bool TakeFormat(const std::string& text, std::optional<EStorageType>& format) {
  if (text == "plain") format = StorageXML;
  if (text == "preformatted") format = StoragePreFmtXML;
  return format.has_value();
}

/// on, off or a number.
bool TakeMark(const std::string& text, std::int64_t highest, std::optional<UINT>& mark) {
  const std::string number = text == "on" ? "1" : text == "off" ? "0" : text;
  const std::optional<std::int64_t> value = ParseNumber(number, 0, highest);
  if (value) mark = static_cast<UINT>(*value);
  return value.has_value();
}

void AddGlobals(CLI::App& app, Options& options) {
  app.add_option("--dir", options.directory, "data directory")->type_name("DIR");
  AddNumber(&app, "--country", options.country, "telephone country code of the channels");
  AddWord(&app, "--signal", "signal type by name (DVBSatellite, FMRadio, ...) or number",
          [&options](const std::string& text) {
            options.signal = ParseSignalType(text);
            return options.signal.has_value();
          });
  AddNumber(&app, "--codepage", options.codePage,
            "code page of narrow texts: 932, 936, 949, 950, 1250 to 1258 or 65001 (UTF-8)");
  AddWord(&app, "--format", "form in which changes are saved: plain (default) or preformatted",
          [&options](const std::string& text) { return TakeFormat(text, options.format); });
  app.add_flag("--json", options.json, "print JSON");
  AddHistoryGlobals(app, options);
  app.set_version_flag("--version", "tunedex " ZORTUNEDEX_VERSION);
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
  const auto set = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      const std::size_t equals = text.find('=');
      if (equals == std::string::npos) {
        throw CLI::ValidationError("--set", "'" + text + "' is not FIELD=VALUE");
      }
      options.assignments.push_back({text.substr(0, equals), text.substr(equals + 1)});
    }
  };
  app->add_option_function<std::vector<std::string>>("--set", set, "any attribute; repeatable")
      ->type_name("FIELD=VALUE")
      ->allow_extra_args(false);
  app->footer(kSetHelp);
}

void AddServices(CLI::App* app, Options& options) {
  AddWord(app, "--service", "tv, radio, data, other, all or a mask",
          [&options](const std::string& text) {
            const std::optional<DWORD> mask = ParseServiceMask(text);
            if (mask) options.services = *mask;
            return mask.has_value();
          });
}

void AddNavigation(CLI::App* channels, Options& options, const char* name, const char* help) {
  CLI::App* step = channels->add_subcommand(name, help);
  AddIndexes(step, options, 1, 1);
  AddServices(step, options);
  step->add_flag("--favorites", options.favoritesOnly, "favourites only");
  step->add_flag("--loop", options.loop, "go on from the other end");
}

void AddReadingCommands(CLI::App* channels, Options& options) {
  CLI::App* list = channels->add_subcommand("list", "List the channels");
  AddServices(list, options);
  CLI::App* show = channels->add_subcommand("show", "Show everything about a channel");
  AddIndexes(show, options, 1, 1);
  AddNavigation(channels, options, "next", "Find the channel behind another; 0: the first");
  AddNavigation(channels, options, "previous", "Find the channel before another");
  CLI::App* find = channels->add_subcommand("find", "Find the first channel of a kind");
  AddNumber(find, "--number", options.number, "with this channel number");
  AddNumber(find, "--like", options.like, "with the station of the channel with this index");
}

void AddMarks(CLI::App* channels, Options& options) {
  CLI::App* favor = channels->add_subcommand("favor", "Mark a favourite");
  AddIndexes(favor, options, 1, 1);
  AddWord(favor, "MARK", "on (default), off or a number",
          [&options](const std::string& text) { return TakeMark(text, UINT32_MAX, options.mark); });
  CLI::App* lock = channels->add_subcommand("lock", "Lock a channel");
  AddIndexes(lock, options, 1, 1);
  AddWord(lock, "MARK", "on (default) or off",
          [&options](const std::string& text) { return TakeMark(text, 1, options.mark); });
}

void AddEditingCommands(CLI::App* channels, Options& options) {
  AddFields(channels->add_subcommand("add", "Add a channel at the end"), options);
  CLI::App* set = channels->add_subcommand("set", "Change a channel");
  AddIndexes(set, options, 1, 1);
  AddFields(set, options);
  CLI::App* remove = channels->add_subcommand("remove", "Remove channels; the rest is renumbered");
  AddIndexes(remove, options, 1, CLI::detail::expected_max_vector_size);
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

void AddCommands(CLI::App& app, Options& options) {
  CLI::App* channels = app.add_subcommand("channels", "Read and change a list of channels");
  channels->require_subcommand(1);
  AddReadingCommands(channels, options);
  AddEditingCommands(channels, options);
  AddSatelliteCommands(app, options);
  AddPresetCommands(app, options);
  AddHistoryCommands(app, options);
  AddCheckCommands(app, options);
  app.add_subcommand("info", "Say what the directory holds");
  CLI::App* format = app.add_subcommand("format", "Rewrite ChanInfo.xml in one of its two forms");
  AddWord(format, "FORM", "plain or preformatted",
          [&options](const std::string& text) { return TakeFormat(text, options.rewriteAs); });
  format->get_option("FORM")->required();
  CLI::App* countries = app.add_subcommand("countries", "List the country codes");
  AddNumber(countries, "CODE", options.countryRow, "this code alone");
}

/// Marks that were not given are on; what every command needs is there.
void Complete(CLI::App& app, Options& options) {
  for (CLI::App* part = &app; !part->get_subcommands().empty();) {
    part = part->get_subcommands().front();
    options.command += (options.command.empty() ? "" : " ") + part->get_name();
  }
  const auto need = [](bool given, const char* what) {
    if (!given) throw UsageError{std::string(what) + " is required"};
  };
  const bool directory = options.command != "countries" && options.command != "catalogue build";
  if (directory) need(!options.directory.empty(), "--dir");
  CompleteSatelliteOptions(options);
  CompletePresetOptions(options);
  CompleteHistoryOptions(options);
  if (!options.command.starts_with("channels ")) return;
  need(options.country.has_value(), "--country");
  need(options.signal.has_value(), "--signal");
  if (options.command == "channels find" &&
      options.number.has_value() == options.like.has_value()) {
    throw UsageError{"channels find takes either --number or --like"};
  }
  if (options.command == "channels set" && options.assignments.empty()) {
    throw UsageError{"channels set needs something to set"};
  }
}

}  // namespace

void AddIndexes(CLI::App* app, Options& options, int least, int most, const std::string& help) {
  const auto take = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      const std::optional<std::int64_t> value = ParseNumber(text, 0, UINT32_MAX);
      if (!value) throw CLI::ValidationError("INDEX", "'" + text + "' is no index");
      options.indexes.push_back(static_cast<UINT>(*value));
    }
  };
  CLI::Option* option = app->add_option_function<std::vector<std::string>>("INDEX", take, help)
                            ->type_name("")
                            ->required();
  option->expected(least, most);
  if (most == least) option->allow_extra_args(false);
}

std::optional<Options> ParseOptions(std::vector<std::string> arguments) {
  Options options;
  CLI::App app("Reads and changes the channel database of a directory.", "tunedex");
  app.fallthrough()->require_subcommand(1)->allow_windows_style_options(false);
  AddGlobals(app, options);
  AddCommands(app, options);
  options.typed = TypedCommand(app, arguments);
  try {
    std::reverse(arguments.begin(), arguments.end());
    arguments.pop_back();  // the program's name
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
      throw UsageError{error.what()};
    }
    app.exit(error, std::cout, std::cerr);
    return std::nullopt;
  }
  Complete(app, options);
  return options;
}

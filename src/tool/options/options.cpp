#include "tool/options/options.h"

#include <algorithm>
#include <iostream>

#include "kit/text/signal_types.h"
#include "tool/options/batch_options.h"
#include "tool/options/channel_options.h"
#include "tool/options/history_options.h"
#include "tool/options/option_helpers.h"
#include "tool/options/preset_options.h"
#include "tool/options/usage_error.h"

namespace {

bool TakeFormat(const std::string& text, std::optional<EStorageType>& format) {
  if (text == "plain") format = StorageXML;
  if (text == "preformatted") format = StoragePreFmtXML;
  return format.has_value();
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

void AddCommands(CLI::App& app, Options& options) {
  AddChannelCommands(app, options);
  AddSatelliteCommands(app, options);
  AddPresetCommands(app, options);
  AddHistoryCommands(app, options);
  app.add_subcommand("info", "Say what the directory holds");
  CLI::App* format = app.add_subcommand("format", "Rewrite ChanInfo.xml in one of its two forms");
  AddWord(format, "FORM", "plain or preformatted",
          [&options](const std::string& text) { return TakeFormat(text, options.rewriteAs); });
  format->get_option("FORM")->required();
  CLI::App* countries = app.add_subcommand("countries", "List the country codes");
  AddNumber(countries, "CODE", options.countryRow, "this code alone");
}

/// Names the command and sees that it has what it needs.
void Complete(CLI::App& app, Options& options) {
  for (CLI::App* part = &app; !part->get_subcommands().empty();) {
    part = part->get_subcommands().front();
    options.command += (options.command.empty() ? "" : " ") + part->get_name();
  }
  const bool directory = options.command != "countries" && options.command != "catalogue build";
  if (directory) RequireGiven(!options.directory.empty(), "--dir");
  CompleteSatelliteOptions(options);
  CompletePresetOptions(options);
  CompleteHistoryOptions(options);
  CompleteChannelOptions(options);
}

/// What a command of a batch has from the command line.
Options GlobalsOf(const Options& options) {
  Options globals;
  globals.directory = options.directory;
  globals.country = options.country;
  globals.signal = options.signal;
  globals.codePage = options.codePage;
  globals.format = options.format;
  globals.json = options.json;
  return globals;
}

}  // namespace

struct CommandParser::Parts {
  Options globals;
  Options options;
  CLI::App app;
};

CommandParser::CommandParser(const Options& globals) : m_parts(std::make_unique<Parts>()) {
  m_parts->globals = GlobalsOf(globals);
  m_parts->app.set_help_flag();
  m_parts->app.require_subcommand(1)->allow_windows_style_options(false);
  AddCommands(m_parts->app, m_parts->options);
}

CommandParser::~CommandParser() = default;

Options CommandParser::Parse(std::vector<std::string> words) {
  m_parts->options = m_parts->globals;
  try {
    std::reverse(words.begin(), words.end());
    m_parts->app.parse(words);
  } catch (const CLI::ParseError& error) {
    throw UsageError{error.what()};
  }
  Complete(m_parts->app, m_parts->options);
  return m_parts->options;
}

std::optional<Options> ParseOptions(std::vector<std::string> arguments) {
  Options options;
  CLI::App app("Reads and changes the channel database of a directory.", "tunedex");
  app.fallthrough()->require_subcommand(1)->allow_windows_style_options(false);
  AddGlobals(app, options);
  AddCommands(app, options);
  AddBatchCommand(app, options);
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
  CompleteBatchOptions(options);
  return options;
}

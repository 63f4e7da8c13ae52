#include "tool/options/options.h"

#include <algorithm>
#include <iostream>

#include "kit/text/signal_types.h"
#include "tool/options/groups/batch_options.h"
#include "tool/options/groups/channel_options.h"
#include "tool/options/groups/check_options.h"
#include "tool/options/groups/history_options.h"
#include "tool/options/groups/option_helpers.h"
#include "tool/options/groups/preset_options.h"
#include "tool/options/location.h"
#include "tool/options/needs.h"
#include "tool/options/typing/command_tree.h"
#include "tool/options/typing/country_names.h"
#include "tool/options/typing/typing_errors.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

constexpr const char* kPurpose = "Reads and changes the channel database of a directory.";

constexpr const char* kCompletionHelp =
    "The packages install it. In a shell without them:\n"
    "  source <(tunedex completion bash)\n"
    "  tunedex completion zsh > ~/.zfunc/_tunedex    # a folder of fpath";

bool TakeFormat(const std::string& text, std::optional<EStorageType>& format) {
  if (text == "plain") format = StorageXML;
  if (text == "preformatted") format = StoragePreFmtXML;
  return format.has_value();
}

void AddGlobals(CLI::App& app, Options& options) {
  app.add_option("--dir", options.directory, "data directory; else TUNEDEX_DIR")->type_name("DIR");
  const auto takeCountry = [&options](const std::string& text) {
    options.country = ParseCountry(text);
    if (!options.country) throw CLI::ValidationError("--country", UnknownCountry(text));
  };
  app.add_option_function<std::string>(
         "--country", takeCountry,
         "country of the channels: its telephone code, ISO code or name; else TUNEDEX_COUNTRY")
      ->type_name("COUNTRY");
  AddWord(&app, "--signal",
          "signal type by name (DVBSatellite, FMRadio, ...) or number; else TUNEDEX_SIGNAL",
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
  app.add_flag_function(
      "--replace-unreadable",
      [&options](std::int64_t) { options.unreadable = Unreadable::TakeAsEmpty; },
      "let a change replace a file that cannot be read; the old one is kept beside it");
  app.set_version_flag("--version", "tunedex " ZORTUNEDEX_VERSION);
}

void AddCommands(CLI::App& app, Options& options) {
  AddChannelCommands(app, options);
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
  const auto takeRow = [&options](const std::string& text) {
    options.countryRow = ParseCountry(text);
    if (!options.countryRow) throw CLI::ValidationError("CODE", UnknownCountry(text));
  };
  countries
      ->add_option_function<std::string>("CODE", takeRow,
                                         "this one alone: its telephone code, ISO code or name")
      ->type_name("");
  CLI::App* completion =
      app.add_subcommand("completion", "Print what completes command lines in a shell");
  AddWord(completion, "SHELL", "bash or zsh", [&options](const std::string& text) {
    options.shell = text;
    return text == "bash" || text == "zsh";
  })->required();
  completion->footer(kCompletionHelp);
}

/// The global options that a command needs stand in its own help, too.
void AddNeeds(CLI::App* app, const std::string& command) {
  const std::vector<CLI::App*> below = app->get_subcommands([](CLI::App*) { return true; });
  for (CLI::App* part : below) {
    AddNeeds(part, command.empty() ? part->get_name() : command + " " + part->get_name());
  }
  if (command.empty() || !below.empty()) return;
  const std::string needs = NeedsHelp(command);
  const std::string footer = app->get_footer();
  if (!needs.empty()) app->footer(footer.empty() ? needs : footer + "\n" + needs);
}

/// What was not given comes from elsewhere, or is missed.
void Complete(const CLI::App& app, Options& options) {
  options.command = command_tree::Deepest(app).name;
  TakeEnvironment(options);
  if (options.directory.empty() && NeedsOf(options.command).directory == Need::Required) {
    throw UsageError{"--dir is required"};
  }
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
  globals.unreadable = options.unreadable;
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
    throw ExplainTyping(m_parts->app, error);
  }
  Complete(m_parts->app, m_parts->options);
  return m_parts->options;
}

void FillParser(CLI::App& app, Options& options) {
  app.fallthrough()->require_subcommand(1)->allow_windows_style_options(false);
  AddGlobals(app, options);
  AddCommands(app, options);
  AddBatchCommand(app, options);
  AddNeeds(&app, {});
}

std::optional<Options> ParseOptions(std::vector<std::string> arguments) {
  Options options;
  CLI::App app(kPurpose, "tunedex");
  FillParser(app, options);
  options.typed = TypedCommand(app, arguments);
  try {
    std::reverse(arguments.begin(), arguments.end());
    arguments.pop_back();  // the program's name
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
      throw ExplainTyping(app, error);
    }
    app.exit(error, std::cout, std::cerr);
    return std::nullopt;
  }
  try {
    Complete(app, options);
    CompleteBatchOptions(options);
  } catch (const UsageError& error) {
    throw UsageError{error.what(), options.command};
  }
  return options;
}

void CompleteForSignal(Options& options) {
  RequireFieldsOfSignal(options);
  CompleteBatchForSignal(options);
}

}  // namespace zortunedex::kit::tool

#include "tool/options/groups/exchange_options.h"

#include <algorithm>

#include "kit/interchange/list/formats.h"
#include "kit/satellites/catalogue_table.h"
#include "kit/text/signal_types.h"
#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

namespace {

constexpr const char* kReportHelp =
    "What is lost stands on standard error, a line a code. docs/interchange.md tells what each "
    "format\n"
    "holds and what the codes mean.";

/// --format; the option.
CLI::Option* AddFormatName(CLI::App* app, Options& options) {
  const auto take = [&options](const std::string& text) {
    options.exchange.format = interchange::FindFormat(text);
    if (options.exchange.format == nullptr) {
      throw CLI::ValidationError("--format", UnknownWord(text, WordsOf(kListFormat)));
    }
  };
  std::string names;
  for (const interchange::Format& format : interchange::Formats()) {
    names += (names.empty() ? "" : ", ") + std::string(format.name);
  }
  return app->add_option_function<std::string>("--format", take, names)->type_name("");
}

void AddFormat(CLI::App* app, Options& options) {
  AddFormatName(app, options)->required();
  app->add_option("--report", options.exchange.report,
                  "write the loss report to this file, as JSON")
      ->type_name("FILE");
  app->footer(kReportHelp);
}

/// An option that not every format takes.
template <typename Take>
void AddOwn(CLI::App* app, Options& options, const std::string& name, const std::string& type,
            const std::string& help, Take take) {
  app->add_option_function<std::string>(
         name,
         [&options, name, take](const std::string& text) {
           options.exchange.given.insert(name);
           take(text);
         },
         help)
      ->type_name(type);
}

void TakeBandwidth(const std::string& text, Options& options) {
  const std::optional<std::int64_t> bandwidth = ParseNumber(text, 5, 10);
  if (!bandwidth || *bandwidth == 9) {
    throw CLI::ValidationError("--bandwidth", "'" + text + "' is not 5, 6, 7, 8 or 10");
  }
  options.exchange.bandwidth = static_cast<std::uint32_t>(*bandwidth);
}

/// A word of an option that has two.
void TakeWord(const std::string& name, const std::string& text) {
  const std::vector<std::string> words = WordsOf(name);
  if (std::ranges::find(words, text) == words.end()) {
    throw CLI::ValidationError(name, UnknownWord(text, words));
  }
}

void AddWriting(CLI::App* app, Options& options) {
  ExchangeOptions& exchange = options.exchange;
  AddOwn(app, options, "--names", "",
         "shown (default) or broadcast: which of the two names goes out",
         [&exchange](const std::string& text) {
           TakeWord("--names", text);
           exchange.names =
               text == "shown" ? interchange::Names::Shown : interchange::Names::Broadcast;
         });
  AddOwn(app, options, "--tuning-from", "DIR", "fill what the list lacks from transponder tables",
         [&exchange](const std::string& text) { exchange.tables = text; });
  AddOwn(app, options, "--bandwidth", "MHZ", "of DVB-T; without it by country and frequency",
         [&options](const std::string& text) { TakeBandwidth(text, options); });
  AddOwn(app, options, "--url", "TEMPLATE",
         "address of each channel, with {index} {name} {sid} {tsid} {onid} {freq_hz} {freq_mhz}\n"
         "{pol} {sr} {fec} {msys}",
         [&exchange](const std::string& text) { exchange.urlTemplate = text; });
  AddOwn(app, options, "--target", "", "satip: addresses of a SAT>IP server, --host",
         [&exchange](const std::string& text) {
           TakeWord("--target", text);
           exchange.satip = true;
         });
  AddOwn(app, options, "--host", "HOST", "of the server",
         [&exchange](const std::string& text) { exchange.host = text; });
  app->add_flag_function(
      "--no-mark",
      [&exchange](std::int64_t) {
        exchange.given.insert("--no-mark");
        exchange.mark = false;
      },
      "without a byte order mark");
}

void AddExport(CLI::App* channels, Options& options) {
  CLI::App* app =
      channels->add_subcommand("export", "Write the list in the format of another program");
  AddFormat(app, options);
  app->add_option("-o,--output", options.output,
                  "file or folder to be made; without it standard output")
      ->type_name("FILE");
  AddWord(app, "--service", "tv, radio, data, other, all or a mask",
          [&options](const std::string& text) {
            options.filter.services = ParseServiceMask(text);
            return options.filter.services.has_value();
          });
  app->add_flag("--favorites", options.filter.favorites, "favourites only");
  AddWriting(app, options);
  app->add_flag("--strict", options.exchange.strict, "end with status 3 when anything is lost");
  AddFileUnit(app, options);
}

void AddImport(CLI::App* channels, Options& options) {
  CLI::App* app = channels->add_subcommand("import", "Take the channels of another program's file");
  app->add_option("FILE", options.exchange.file, "file, or folder where the format has one")
      ->type_name("")
      ->required();
  AddFormat(app, options);
  CLI::Option* append =
      app->add_flag("--append", options.exchange.append, "behind the channels that there are");
  app->add_flag("--replace", options.exchange.replace,
                "in the place of the channels that there are")
      ->excludes(append);
  AddPosition(app, options);
  AddFileUnit(app, options);
}

bool Takes(const interchange::Format& format, const std::string& option) {
  return std::ranges::any_of(format.options, [&](const char* known) { return option == known; });
}

}  // namespace

void AddFileUnit(CLI::App* app, Options& options) {
  AddWord(app, "--file-unit",
          "hz, khz (default) or mhz: what the frequencies of the directory are in; with hz its "
          "symbol\nrates are in symbols, else in thousands",
          [&options](const std::string& text) {
            interchange::FileUnit& unit = options.exchange.fileUnit;
            unit = text == "hz" ? interchange::FileUnit::Hertz : interchange::FileUnit::Kilohertz;
            if (text == "mhz") unit = interchange::FileUnit::Megahertz;
            return text == "hz" || text == "khz" || text == "mhz";
          });
}

void AddScanFormat(CLI::App* app, Options& options) { AddFormatName(app, options); }

void AddPosition(CLI::App* app, Options& options) {
  AddOwn(app, options, "--position", "POSITION",
         "of the satellite, where the format tells none: 19.2E",
         [&options](const std::string& text) {
           const auto position = catalogue_table::ParsePosition(text);
           if (!position || position->rounded) {
             throw CLI::ValidationError("--position", "'" + text + "' is no position like 19.2E");
           }
           options.exchange.position = position->longitude;
         });
}

void AddExchangeCommands(CLI::App* channels, Options& options) {
  AddExport(channels, options);
  AddImport(channels, options);
}

void RequireTaken(const Options& options, const interchange::Format& format) {
  for (const std::string& option : options.exchange.given) {
    if (!Takes(format, option)) throw UsageError{option + " goes without --format " + format.name};
  }
}

void CompleteExchangeOptions(const Options& options) {
  const interchange::Format* format = options.exchange.format;
  if (format == nullptr) return;
  RequireTaken(options, *format);
  if (options.exchange.satip == options.exchange.host.empty()) {
    throw UsageError{"--target satip and --host go together"};
  }
  if (options.command != "channels export" || !options.output.empty()) return;
  if (format->isFolder) throw UsageError{std::string("--format ") + format->name + " needs -o"};
  if (options.json) throw UsageError{"--json, which prints the loss report, needs -o"};
}

}  // namespace zortunedex::kit::tool

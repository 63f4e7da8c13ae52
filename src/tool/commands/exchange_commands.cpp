#include <iostream>
#include <utility>

#include "kit/failure.h"
#include "kit/files/whole_file.h"
#include "kit/interchange/list/exchange_files.h"
#include "kit/interchange/list/exporting.h"
#include "kit/interchange/list/importing.h"
#include "kit/interchange/list/list_in_exchange.h"
#include "kit/interchange/loss_report.h"
#include "kit/interchange/services/tuning_tables.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/save_table.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/exit_status.h"
#include "tool/options/location.h"
#include "tool/printing/losses.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using interchange::Into;
using interchange::ListInExchange;
using interchange::LossReport;

namespace commands {
namespace {

void Report(const LossReport& report, const Options& options) {
  PrintLosses(report);
  const std::string& file = options.exchange.report;
  if (file.empty() && !options.json) return;
  const std::string document = interchange::LossJson(report);
  if (!file.empty()) whole_file::Replace(file, document + "\n");
  if (options.json) PrintJsonText(document);
}

/// Without a path the file is printed.
void Write(const interchange::Output& output, const Options& options) {
  if (!options.output.empty()) {
    return interchange::WriteFiles(output, options.output, options.exchange.format->isFolder,
                                   PrintNote);
  }
  for (const interchange::OutputFile& file : output.files) std::cout << file.bytes;
}

std::string CountText(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " channel" : " channels");
}

Into IntoWhat(const Options& options, const ChannelList& list) {
  if (options.exchange.append) return Into::Append;
  if (options.exchange.replace) return Into::Replace;
  if (list.Channels().empty()) return Into::Empty;
  throw Failure{E_INVALIDARG, "the list has " + CountText(list.Channels().size()) +
                                  ": --append adds to them, --replace takes their place"};
}

}  // namespace

void ExportChannels(const Options& options) {
  LayoutOf(*options.signal);  // whether there are such channels is told before anything is opened
  const ExchangeOptions& exchange = options.exchange;
  const ChannelMatcher matcher(options.filter, *options.signal);
  const ListInExchange list(LocationOf(options), exchange.format, options.unreadable,
                            options.codePage);
  const std::vector<Channel> channels = interchange::FromFileUnit(
      matcher.Matching(list.List().Channels(), list.Narrow()), *options.signal, exchange.fileUnit);
  interchange::ExportRequest request{list.Context(), channels};
  request.names = exchange.names;
  if (!exchange.tables.empty()) request.tuning = interchange::ReadTuningTables(exchange.tables);
  request.bandwidth = exchange.bandwidth;
  request.mark = exchange.mark;
  request.urlTemplate = exchange.urlTemplate;
  request.satipHost = exchange.host;
  const interchange::Export made = interchange::ExportChannels(*exchange.format, request);
  if (!options.dryRun) Write(made.output, options);
  Report({interchange::Direction::Export, exchange.format->name, channels.size(),
          made.output.written.size(), made.losses},
         options);
  if (exchange.strict && !made.losses.Empty()) AskToLook();
}

void ImportChannels(const Options& options) {
  LayoutOf(*options.signal);
  const ExchangeOptions& exchange = options.exchange;
  const interchange::Input input = interchange::ReadInput(exchange.file);
  interchange::RequireFile(input, *exchange.format, exchange.file);
  // A format without a head would take it for a list without channels.
  if (!input.isFolder && input.bytes.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw Failure{E_INVALIDARG, exchange.file + " is empty"};
  }
  const ListInExchange list(LocationOf(options), exchange.format, options.unreadable,
                            options.codePage);
  const Into into = IntoWhat(options, list.List());
  interchange::Import made = interchange::ImportChannels(
      *exchange.format, input, {list.Context(), list.List().Channels(), exchange.position}, into);
  // An order brings no channels.
  if (exchange.format->readBack == nullptr) {
    const std::size_t first = made.table.channels.size() - made.taken;
    for (std::size_t i = first; i < made.table.channels.size(); ++i) {
      Channel& channel = made.table.channels[i];
      channel = interchange::ToFileUnit(std::move(channel), *options.signal, exchange.fileUnit,
                                        made.losses);
    }
  }
  const LossReport report{interchange::Direction::Import, exchange.format->name, made.read,
                          made.taken, made.losses};
  // A file of other signals would leave an empty list.
  if (into == Into::Replace && made.read != 0 && made.taken == 0) {
    Report(report, options);
    throw Failure{E_INVALIDARG,
                  exchange.file + " has no channel for this list, which stays as it is"};
  }
  SaveTable(options.directory, made.table, {options.format, PrintNote, options.unreadable});
  Report(report, options);
  if (!options.json) {
    std::cout << CountText(made.read) << " read, " << made.taken << " imported\n";
  }
}

}  // namespace commands

}  // namespace zortunedex::kit::tool

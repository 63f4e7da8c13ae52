// A scan into the list, and a list against another one.
#include <filesystem>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/files/whole_file.h"
#include "kit/history/snapshots/file_set.h"
#include "kit/interchange/list/scan.h"
#include "kit/merge/merge.h"
#include "kit/merge/merge_report.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/save_table.h"
#include "kit/text/signal_types.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/exchange_files.h"
#include "tool/commands/running/exit_status.h"
#include "tool/commands/running/file_units.h"
#include "tool/commands/running/list_in_exchange.h"
#include "tool/options/groups/exchange_options.h"
#include "tool/options/location.h"
#include "tool/options/usage_error.h"
#include "tool/printing/losses.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using interchange::Format;
using interchange::Input;
using merge::MergeBase;
using merge::MergePlan;
using merge::PlanKind;

namespace commands {
namespace {

constexpr char kNoBase[] = "none";

bool IsDataDirectory(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(file_scan::ChannelFile(path), error);
}

std::string SetName(const Location& location) {
  return std::to_string(location.country) + " " + SignalTypeName(location.signal);
}

/// The set must be there: another one is another list.
void RequireSet(const Location& location) {
  std::string sets;
  for (const file_scan::ChannelSet& set : file_scan::Scan(location.directory).sets) {
    if (set.country == location.country && set.signal == location.signal) return;
    sets +=
        (sets.empty() ? "" : ", ") + std::to_string(set.country) + " " + SignalTypeName(set.signal);
  }
  throw Failure{E_INVALIDARG, location.directory + " has no channels of " + SetName(location) +
                                  (sets.empty() ? "" : "; it has " + sets)};
}

/// The channels that a host scanned into a directory of its own.
ChannelTable ReadScannedDirectory(const Location& location) {
  try {
    RequireReadable(location.directory, "ChanInfo.xml");
    RequireSet(location);
    return ReadTable(location);
  } catch (const UnreadableFile& failure) {
    // The repair that is offered for such a file would be that of the list's own directory.
    throw Failure{failure.Result(), location.directory + ": " + failure.what()};
  }
}

/// A file of the command line, and what kind it is.
struct ScanFile {
  Input input;
  const Format* format = nullptr;
};

ScanFile ReadScanFile(const Options& options) {
  const std::string& path = options.exchange.file;
  ScanFile file{ReadInput(path), options.exchange.format};
  if (file.format == nullptr) file.format = interchange::RecogniseFormat(file.input);
  if (file.format == nullptr) {
    throw UsageError{path + ": what kind of file it is cannot be told; --format says it"};
  }
  RequireFile(file.input, *file.format, path);
  RequireTaken(options, *file.format);
  return file;
}

/// What a merge holds against each other.
class Merging {
 public:
  explicit Merging(const Options& options) : m_options(options) {
    const std::string& path = options.exchange.file;
    const bool isDirectory = options.exchange.format == nullptr && IsDataDirectory(path);
    if (isDirectory && options.exchange.position) {
      throw UsageError{"--position goes without a data directory"};
    }
    if (!isDirectory) m_file = ReadScanFile(options);
    m_list.emplace(options, m_file.format);
    m_table = {*options.country, *options.signal, Ours(m_list->List().Channels())};
    m_scan = isDirectory ? ReadScannedDirectory({path, *options.country, *options.signal})
                         : ReadFromFile();
    if (isDirectory) m_scan.channels = Ours(m_scan.channels);
    m_policy = options.merging.policy;
    m_policy.utf8 = [this](std::string_view narrow) {
      return utf::FromWide(m_list->Narrow().ToWide(narrow));
    };
  }
  Merging(const Merging&) = delete;
  Merging& operator=(const Merging&) = delete;

  const interchange::ListContext& Context() const { return m_list->Context(); }

  MergePlan Plan(const MergeBase* base) {
    if (m_file.format != nullptr) TellByFormat(base);
    return merge::PlanMerge(m_table, base, m_scan, m_policy);
  }

  /// The list as it is to be, as the directory has it.
  ChannelTable ToSave(const MergePlan& plan) const {
    std::map<UINT, std::size_t> places;
    for (const merge::Change& change : plan.changes) {
      if (change.inList && change.resultIndex != 0) places[change.resultIndex] = *change.inList;
    }
    ChannelTable table = merge::Apply(plan);
    interchange::Losses none;
    for (Channel& channel : table.channels) {
      const auto place = places.find(channel.index);
      channel = place == places.end()
                    ? ToFileUnit(channel, *m_options.signal, Unit(), none)
                    : ToFileUnit(channel, m_list->List().Channels()[place->second],
                                 *m_options.signal, Unit());
    }
    return table;
  }

 private:
  FileUnit Unit() const { return m_options.exchange.fileUnit; }

  std::vector<Channel> Ours(const std::vector<Channel>& channels) const {
    return FromFileUnit(channels, *m_options.signal, Unit());
  }

  ChannelTable ReadFromFile() const {
    const std::vector<Channel> none;
    interchange::Scan scan = interchange::ReadScan(*m_file.format, m_file.input,
                                                   {Context(), none, m_options.exchange.position});
    // What the directory cannot hold is no change of the broadcaster's.
    for (Channel& channel : scan.table.channels) {
      channel = ToFileUnit(std::move(channel), *m_options.signal, Unit(), scan.losses);
    }
    scan.table.channels = Ours(scan.table.channels);
    PrintLosses({interchange::Direction::Import, m_file.format->name, scan.read,
                 scan.table.channels.size(), scan.losses});
    return std::move(scan.table);
  }

  /// So that what only the format leaves out or rounds is no change.
  void TellByFormat(const MergeBase* base) {
    m_policy.toldList = AsTold(m_table.channels);
    if (base == nullptr) return;
    std::vector<Channel> channels;
    for (const merge::BaseEntry& entry : base->entries) channels.push_back(entry.channel);
    m_policy.toldBase = AsTold(channels);
  }

  std::vector<Channel> AsTold(const std::vector<Channel>& channels) const {
    interchange::ExportRequest request{Context(), channels};
    request.names = interchange::Names::Broadcast;
    return interchange::AsToldBy(*m_file.format, m_file.input, request);
  }

  const Options& m_options;
  ScanFile m_file;  ///< no format: a data directory
  std::optional<ListInExchange> m_list;
  ChannelTable m_table;
  ChannelTable m_scan;
  merge::MergePolicy m_policy;
};

void Print(const MergePlan& plan, PlanKind kind, const Options& options) {
  if (options.json) {
    PrintJson(merge::PlanJson(plan, kind));
  } else {
    std::cout << merge::PlanText(plan, kind);
  }
  if (options.merging.exitCode && plan.changesList) AskToLook();
}

std::string NameOfBase(const Options& options) {
  return merge::BaseFileName(*options.country, *options.signal);
}

/// What the last merge left, or the file that takes its place.
std::optional<MergeBase> BaseOf(const Options& options, const Merging& merging) {
  const std::string& given = options.merging.base;
  if (given == kNoBase) return std::nullopt;
  if (given.empty()) {
    const auto bytes = history::ReadFile(options.directory, NameOfBase(options));
    if (!bytes) return std::nullopt;
    return merge::ReadBase(*bytes, merging.Context());
  }
  const auto bytes = whole_file::Read(whole_file::PathOf(given));
  if (!bytes) throw Failure{E_FAIL, given + " is not there or cannot be read"};
  return merge::ReadBase(*bytes, merging.Context());
}

}  // namespace

void MergeChannels(const Options& options) {
  LayoutOf(*options.signal);  // whether there are such channels is told before anything is opened
  Merging merging(options);
  const std::optional<MergeBase> base = BaseOf(options, merging);
  const MergePlan plan = merging.Plan(base ? &*base : nullptr);
  if (plan.changesList) {
    SaveTable(options.directory, merging.ToSave(plan),
              {options.format, PrintNote, options.unreadable});
  }
  whole_file::Replace(history::PathOf(options.directory, NameOfBase(options)),
                      merge::WriteBase(plan.base, merging.Context()));
  Print(plan, PlanKind::Merge, options);
}

void CompareChannels(const Options& options) {
  LayoutOf(*options.signal);
  Print(Merging(options).Plan(nullptr), PlanKind::Diff, options);
}

}  // namespace commands

}  // namespace zortunedex::kit::tool

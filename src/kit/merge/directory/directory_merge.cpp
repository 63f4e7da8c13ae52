#include "kit/merge/directory/directory_merge.h"

#include <filesystem>
#include <map>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/files/whole_file.h"
#include "kit/history/snapshots/file_set.h"
#include "kit/interchange/list/exchange_files.h"
#include "kit/interchange/list/scan.h"
#include "kit/saving/save_table.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::merge {
namespace {

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

}  // namespace

bool IsDataDirectory(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(file_scan::ChannelFile(path), error);
}

ScanSource OpenScan(const std::string& path, const interchange::Format* format) {
  ScanSource scan{path, {}, format};
  if (format == nullptr && IsDataDirectory(path)) return scan;
  scan.input = interchange::ReadInput(path);
  if (format == nullptr) scan.format = interchange::RecogniseFormat(scan.input);
  if (scan.format == nullptr) {
    throw InvalidArgument{path + ": what kind of file it is cannot be told"};
  }
  interchange::RequireFile(scan.input, *scan.format, path);
  return scan;
}

DirectoryMerge::DirectoryMerge(const MergeSettings& settings, ScanSource scan)
    : m_location(settings.list),
      m_fileUnit(settings.fileUnit),
      m_source(std::move(scan)),
      m_list(m_location, m_source.format, settings.unreadable, settings.codePage),
      m_table{m_location.country, m_location.signal, Ours(m_list.List().Channels())},
      m_scan(ReadScan()),
      m_policy(settings.policy) {
  m_policy.utf8 = [this](std::string_view narrow) {
    return utf::FromWide(m_list.Narrow().ToWide(narrow));
  };
}

ChannelTable DirectoryMerge::ReadScan() {
  if (m_source.format == nullptr) {
    ChannelTable scanned =
        ReadScannedDirectory({m_source.path, m_location.country, m_location.signal});
    scanned.channels = Ours(scanned.channels);
    return scanned;
  }
  const std::vector<Channel> none;
  interchange::Scan scan =
      interchange::ReadScan(*m_source.format, m_source.input, {Context(), none, m_source.position});
  // What the directory cannot hold is no change of the broadcaster's.
  for (Channel& channel : scan.table.channels) {
    channel = ToFileUnit(std::move(channel), m_location.signal, m_fileUnit, scan.losses);
  }
  scan.table.channels = Ours(scan.table.channels);
  m_read = scan.read;
  m_losses = std::move(scan.losses);
  return std::move(scan.table);
}

std::vector<Channel> DirectoryMerge::Ours(const std::vector<Channel>& channels) const {
  return interchange::FromFileUnit(channels, m_location.signal, m_fileUnit);
}

/// The list as it is to be, as the directory has it.
ChannelTable DirectoryMerge::ToSave(const MergePlan& plan) const {
  if (m_fileUnit == interchange::FileUnit::Kilohertz) return Apply(plan);
  std::map<UINT, std::size_t> places;
  for (const Change& change : plan.changes) {
    if (change.inList && change.resultIndex != 0) places[change.resultIndex] = *change.inList;
  }
  ChannelTable table = Apply(plan);
  interchange::Losses none;
  for (Channel& channel : table.channels) {
    const auto place = places.find(channel.index);
    channel = place == places.end() ? ToFileUnit(channel, m_location.signal, m_fileUnit, none)
                                    : ToFileUnit(channel, m_list.List().Channels()[place->second],
                                                 m_location.signal, m_fileUnit);
  }
  return table;
}

std::optional<interchange::LossReport> DirectoryMerge::Losses() const {
  if (m_source.format == nullptr) return std::nullopt;
  return interchange::LossReport{interchange::Direction::Import, m_source.format->name, m_read,
                                 m_scan.channels.size(), m_losses};
}

std::optional<MergeBase> DirectoryMerge::KeptBase() const {
  const auto bytes =
      history::ReadFile(m_location.directory, BaseFileName(m_location.country, m_location.signal));
  if (!bytes) return std::nullopt;
  return ReadBase(*bytes, Context());
}

MergePlan DirectoryMerge::Plan(const MergeBase* base) {
  if (m_source.format != nullptr) TellByFormat(base);
  return PlanMerge(m_table, base, m_scan, m_policy);
}

void DirectoryMerge::Save(const MergePlan& plan, const SaveOptions& options) const {
  if (plan.changesList) SaveTable(m_location.directory, ToSave(plan), options);
  const std::string name = BaseFileName(m_location.country, m_location.signal);
  whole_file::Replace(history::PathOf(m_location.directory, name), WriteBase(plan.base, Context()));
}

/// So that what only the format leaves out or rounds is no change.
void DirectoryMerge::TellByFormat(const MergeBase* base) {
  m_policy.toldList = AsTold(m_table.channels);
  m_policy.toldBase.clear();
  if (base == nullptr) return;
  std::vector<Channel> channels;
  for (const BaseEntry& entry : base->entries) channels.push_back(entry.channel);
  m_policy.toldBase = AsTold(channels);
}

std::vector<Channel> DirectoryMerge::AsTold(const std::vector<Channel>& channels) const {
  interchange::ExportRequest request{Context(), channels};
  request.names = interchange::Names::Broadcast;
  return interchange::AsToldBy(*m_source.format, m_source.input, request);
}

}  // namespace zortunedex::kit::merge

// A scan into the list of a directory: what PlanMerge is given, read from files, and what it makes,
// written to them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "kit/interchange/format.h"
#include "kit/interchange/list/list_in_exchange.h"
#include "kit/interchange/loss_report.h"
#include "kit/interchange/services/file_units.h"
#include "kit/merge/merge.h"
#include "kit/model/database.h"
#include "kit/saving/save_options.h"

namespace zortunedex::kit::merge {

/// Where a scan is, and what kind of file holds it.
struct ScanSource {
  std::string path;                             ///< UTF-8; messages name it
  interchange::Input input;                     ///< not of a data directory
  const interchange::Format* format = nullptr;  ///< null: a data directory
  std::optional<std::int32_t> position = {};    ///< tenths of a degree, negative in the west
};

/// True for a directory with a ChanInfo.xml.
bool IsDataDirectory(const std::string& path);

/// A data directory, or a file or folder of any format that lists enter in; which one is found out
/// where `format` is null. InvalidArgument where that cannot be told, Failure for what is not
/// there.
ScanSource OpenScan(const std::string& path, const interchange::Format* format = nullptr);

/// Which list takes a scan, and by what rules.
struct MergeSettings {
  /// The list that takes the scan. In the work of history::MakeChange its directory is the copy.
  Location list;
  MergePolicy policy = {};
  Unreadable unreadable = Unreadable::Refuse;  ///< of the list, not of the scan
  std::optional<UINT> codePage = {};           ///< of the list's texts; nothing: the system's
  /// Of the list, and of a directory that is scanned into.
  interchange::FileUnit fileUnit = interchange::FileUnit::Kilohertz;
};

/// What a merge holds against each other, read once.
class DirectoryMerge {
 public:
  /// Reads the list and the scan. Failure where one of them cannot be read, for a scan of another
  /// country or without such channels, and for a format that has no form for the signal type.
  DirectoryMerge(const MergeSettings& settings, ScanSource scan);
  DirectoryMerge(const DirectoryMerge&) = delete;
  DirectoryMerge& operator=(const DirectoryMerge&) = delete;

  /// What reading and writing a base needs; lives as long as this.
  const interchange::ListContext& Context() const { return m_list.Context(); }
  /// What of the scan's file no channel keeps, as long as this lives; nothing for a data directory.
  std::optional<interchange::LossReport> Losses() const;

  /// What the last merge of this list left in the directory's history; nothing where there was
  /// none. Failure for one that is damaged.
  std::optional<MergeBase> KeptBase() const;

  /// What a merge would do; null: without a base. Failure as of PlanMerge.
  MergePlan Plan(const MergeBase* base);

  /// Makes the plan's list that of the directory, as SaveTable does, and keeps the plan's base for
  /// the next merge. Failure as of SaveTable; then the base stays as it was.
  void Save(const MergePlan& plan, const SaveOptions& options = {}) const;

 private:
  ChannelTable ReadScan();
  std::vector<Channel> Ours(const std::vector<Channel>& channels) const;
  ChannelTable ToSave(const MergePlan& plan) const;
  void TellByFormat(const MergeBase* base);
  std::vector<Channel> AsTold(const std::vector<Channel>& channels) const;

  Location m_location;
  interchange::FileUnit m_fileUnit;
  ScanSource m_source;
  interchange::ListInExchange m_list;
  ChannelTable m_table;
  interchange::Losses m_losses;  ///< of a file
  std::size_t m_read = 0;        ///< channels that stand in the file, also those left out
  ChannelTable m_scan;
  MergePolicy m_policy;
};

}  // namespace zortunedex::kit::merge

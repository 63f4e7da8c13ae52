// A scan into the list, and a list against another one.
#include <iostream>

#include "kit/failure.h"
#include "kit/files/whole_file.h"
#include "kit/merge/directory/directory_merge.h"
#include "kit/merge/merge_report.h"
#include "kit/model/channel_layout.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/exit_status.h"
#include "tool/options/groups/exchange_options.h"
#include "tool/options/location.h"
#include "tool/options/usage_error.h"
#include "tool/printing/losses.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using interchange::Format;
using merge::DirectoryMerge;
using merge::MergeBase;
using merge::MergePlan;
using merge::PlanKind;
using merge::ScanSource;

namespace commands {
namespace {

constexpr char kNoBase[] = "none";

/// The scan of the command line, or the other list.
ScanSource OpenScan(const Options& options) {
  const std::string& path = options.exchange.file;
  const Format* const format = options.exchange.format;
  if (format == nullptr && merge::IsDataDirectory(path)) {
    if (options.exchange.position) throw UsageError{"--position goes without a data directory"};
    return merge::OpenScan(path);
  }
  ScanSource scan;
  try {
    scan = merge::OpenScan(path, format);
  } catch (const InvalidArgument& error) {
    throw UsageError{std::string(error.what()) + "; --format says it"};
  }
  RequireTaken(options, *scan.format);
  scan.position = options.exchange.position;
  return scan;
}

/// What a merge holds against each other; what the scan's file holds beyond that is told.
class Merging {
 public:
  explicit Merging(const Options& options)
      : m_merge({LocationOf(options), options.merging.policy, options.unreadable, options.codePage,
                 options.exchange.fileUnit},
                OpenScan(options)) {
    if (const auto losses = m_merge.Losses()) PrintLosses(*losses);
  }

  DirectoryMerge* operator->() { return &m_merge; }

 private:
  DirectoryMerge m_merge;
};

void Print(const MergePlan& plan, PlanKind kind, const Options& options) {
  if (options.json) {
    PrintJsonText(merge::PlanJson(plan, kind));
  } else {
    std::cout << merge::PlanText(plan, kind);
  }
  if (options.merging.exitCode && plan.changesList) AskToLook();
}

/// What the last merge left, or the file that takes its place.
std::optional<MergeBase> BaseOf(const Options& options, Merging& merging) {
  const std::string& given = options.merging.base;
  if (given == kNoBase) return std::nullopt;
  if (given.empty()) return merging->KeptBase();
  const auto bytes = whole_file::Read(whole_file::PathOf(given));
  if (!bytes) throw Failure{E_FAIL, given + " is not there or cannot be read"};
  return merge::ReadBase(*bytes, merging->Context());
}

}  // namespace

void MergeChannels(const Options& options) {
  LayoutOf(*options.signal);  // whether there are such channels is told before anything is opened
  Merging merging(options);
  const std::optional<MergeBase> base = BaseOf(options, merging);
  const MergePlan plan = merging->Plan(base ? &*base : nullptr);
  merging->Save(plan, {options.format, PrintNote, options.unreadable});
  Print(plan, PlanKind::Merge, options);
}

void CompareChannels(const Options& options) {
  LayoutOf(*options.signal);
  Print(Merging(options)->Plan(nullptr), PlanKind::Diff, options);
}

}  // namespace commands

}  // namespace zortunedex::kit::tool

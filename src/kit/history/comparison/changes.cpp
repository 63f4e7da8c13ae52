#include "kit/history/comparison/changes.h"

#include "kit/history/comparison/channel_changes.h"
#include "kit/history/comparison/element_changes.h"

namespace zortunedex::kit::history {
namespace {

Change OfTheFile(const std::string& name, const FileSet& from, const FileSet& to) {
  Change change;
  change.file = name;
  if (!BytesOf(from, name)) change.kind = Kind::Added;
  if (!BytesOf(to, name)) change.kind = Kind::Removed;
  return change;
}

}  // namespace

const char* WordOf(Kind kind) {
  switch (kind) {
    case Kind::Added:
      return "added";
    case Kind::Removed:
      return "removed";
    case Kind::Moved:
      return "moved";
    case Kind::Renamed:
      return "renamed";
    default:
      return "changed";
  }
}

std::vector<Change> ChangesBetween(const FileSet& from, const FileSet& to) {
  std::vector<Change> changes;
  for (const std::string& name : Differing(from, to)) {
    const std::string before = BytesOf(from, name).value_or("");
    const std::string now = BytesOf(to, name).value_or("");
    std::vector<Change> found =
        name == data_files::kChannels ? ChannelChanges(before, now) : ElementChanges(before, now);
    const Change whole = OfTheFile(name, from, to);
    if (found.empty() || whole.kind != Kind::Changed) changes.push_back(whole);
    for (Change& change : found) {
      change.file = name;
      changes.push_back(std::move(change));
    }
  }
  return changes;
}

}  // namespace zortunedex::kit::history

// What is different between two states of a directory, in the words of those who use it.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/interfaces.h"
#include "kit/history/snapshots/file_set.h"

namespace zortunedex::kit::history {

/// What became of it.
enum class Kind { Added, Removed, Moved, Renamed, Changed };

/// "added", "removed" ...
const char* WordOf(Kind kind);

/// A value that is another one, as people read it.
struct FieldChange {
  std::string field;
  std::string from;  ///< "-" where there was none
  std::string to;
};

/// The list that a channel stands in.
struct ListKey {
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;

  bool operator==(const ListKey&) const = default;
  bool operator<(const ListKey& other) const {
    return std::pair(country, signal) < std::pair(other.country, other.signal);
  }
};

/// Which channel a change is about.
struct ChannelPlace {
  ListKey list;
  UINT before = 0;  ///< its index; 0: it was not there
  UINT now = 0;     ///< 0: it is not there any more
};

/// One thing that is different.
struct Change {
  Kind kind = Kind::Changed;
  std::string file;
  std::optional<ChannelPlace> channel;
  /// The name of a channel, else "dish 1, satellite Astra"; empty for the file as a whole.
  std::string what;
  std::vector<FieldChange> fields;  ///< of what was renamed or changed
};

/// Everything that differs, channels by list and index first. A file whose bytes differ is in it in
/// any case.
std::vector<Change> ChangesBetween(const FileSet& from, const FileSet& to);

}  // namespace zortunedex::kit::history

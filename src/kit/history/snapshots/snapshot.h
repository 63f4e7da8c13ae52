#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zortunedex::kit::history {

using Number = std::uint32_t;

/// A copy of a file in the history's folder.
struct StoredFile {
  std::string in;  ///< name of the copy; snapshots share those of files that did not change
  std::uint64_t size = 0;
  std::uint32_t crc32 = 0;

  bool operator==(const StoredFile&) const = default;
};

/// What the files of a directory were after one change.
struct Snapshot {
  Number number = 0;
  std::optional<Number> parent;
  std::string time;                                        ///< UTC, ISO 8601
  std::string by;                                          ///< command, or kOutside
  std::map<std::string, std::optional<StoredFile>> files;  ///< nothing: there was no such file

  /// The copy of a file; null where there was none.
  const StoredFile* Find(const std::string& name) const;
};

/// Who made a change that no command of the tool made.
inline constexpr char kOutside[] = "outside";

/// A file of the history is not what it should be; says what is wrong.
struct Damage : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The history was made by another version, whose rules are not known.
struct ForeignVersion : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// "000042"
std::string DigitsOf(Number number);
/// "000042.json"
std::string FileNameOf(Number number);
/// The number in front of `end` where a name is one of that form.
std::optional<Number> NumberOf(std::string_view name, std::string_view end);

/// The text of the snapshot's file.
std::string ToJson(const Snapshot& snapshot);
/// Raises Damage or ForeignVersion. Names of files in what is answered are no paths.
Snapshot SnapshotOf(Number number, std::string_view json);

/// What is being done while files are replaced.
struct Pending {
  std::optional<Number> from;
  Number target = 0;
};

/// The text of the file that says so.
std::string ToJson(const Pending& pending);
/// Raises Damage or ForeignVersion.
Pending PendingOf(std::string_view json);

/// The time of now.
std::string TimeNow();

}  // namespace zortunedex::kit::history

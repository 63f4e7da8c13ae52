// The transponder tables that are published for satellites, one text file each. Two forms are read:
// sections of KEY = VALUE lines ("DVBv5"), and lines "S 11509500 V 22000000 3/4" ("zap").
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/com.h"

namespace zortunedex::kit::catalogue_table {

/// One transponder as it stands in the file. The keys are those of the first form, in capitals; the
/// other form is read into the same ones.
struct Entry {
  std::size_t line = 0;
  std::string title;  ///< empty where the section has no name of its own
  std::vector<std::pair<std::string, std::string>> values;

  /// Null when there is none.
  const std::string* Find(std::string_view key) const;
};

struct Position {
  LONG longitude = 0;  ///< tenths of a degree, negative in the west
  bool rounded = false;
};

struct Table {
  std::string satellite;  ///< from the header's "Channel table for ... at ..."; else empty
  std::optional<Position> position;  ///< from the header
  std::vector<Entry> entries;
};

/// A file that is no table.
struct Malformed {
  std::string reason;
};

/// Raises Malformed.
Table Read(std::string_view bytes);

/// A position alone: "19.2E", "97W" or with a degree sign; nothing for what is none.
std::optional<Position> ParsePosition(std::string_view text);

/// What a file's name tells: the satellite, and its position where the name ends with one.
struct FileName {
  std::string id;    ///< without an extension
  std::string base;  ///< the id without its position
  std::optional<Position> position;
};
FileName ParseFileName(std::string_view name);

}  // namespace zortunedex::kit::catalogue_table

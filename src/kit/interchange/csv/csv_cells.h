// The cells of a channel's values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kit/interchange/services/channel_values.h"

namespace zortunedex::kit::interchange::csv {

/// A value in a cell: texts are guarded, rates are written "FEC 3/4", since a bare 3/4 becomes a
/// date.
std::string CellOf(const station_blocks::Field& field, const FieldValue& value);
/// The value in a cell; a text where the field wants a number and the cell has none.
FieldValue ValueIn(const station_blocks::Field& field, std::string_view cell);

/// Entries "2|33|0 2|34|0"; in names a percent sign and two digits stand for what separates.
std::string CellOf(const std::vector<EntryValues>& entries);
/// The entries in a cell: as many as any list has room for, and how many there are.
struct Entries {
  std::vector<EntryValues> first;
  std::size_t count = 0;
};
Entries EntriesIn(const Column& column, std::string_view cell);

}  // namespace zortunedex::kit::interchange::csv

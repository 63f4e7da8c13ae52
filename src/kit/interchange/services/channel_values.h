// A channel value by value, in the order of the file: what tables of channels have as columns, and
// what is compared to tell losses.
#pragma once

#include <string>
#include <vector>

#include "kit/model/channel.h"
#include "kit/model/field_value.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit::interchange {

/// An attribute, or a list of entries. One of the three is set.
struct Column {
  const char* name;
  const station_blocks::Field* field = nullptr;
  const station_blocks::StreamList* list = nullptr;
  const station_blocks::ComponentList* components = nullptr;
};

/// The attributes in the order of the station blocks' tables, then the lists. Two spellings of one
/// place are one column, the one that is written.
std::vector<Column> ColumnsOf(InputSignalType signal);

/// Value of a column's attribute, wherever it lives.
FieldValue ValueOf(const Channel& channel, const station_blocks::Field& field,
                   const NarrowText& narrow);

/// The values of one entry of a list, in the order of its rows.
using EntryValues = std::vector<FieldValue>;
/// The entries that count.
std::vector<EntryValues> EntriesOf(const Channel& channel, const Column& column,
                                   const NarrowText& narrow);
/// Names of an entry's values.
std::vector<const char*> EntryNames(const Column& column);

}  // namespace zortunedex::kit::interchange

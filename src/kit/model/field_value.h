// The values of a channel one by one, as hosts show and compare them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "kit/model/channel.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit {

/// Nothing, a mark, a number or UTF-8. Numbers of a block are signed, as the file has them;
/// parameters with a word are that word.
using FieldValue = std::variant<std::monostate, bool, std::int64_t, std::string>;

/// Value of a field of a station block, whose bytes begin at `place`.
FieldValue ReadFieldValue(const BYTE* place, const station_blocks::Field& field,
                          const NarrowText& narrow);
/// The same of a field that is no text.
FieldValue ReadNumberValue(const BYTE* place, const station_blocks::Field& field);

/// What a record answers for itself.
struct RecordField {
  enum class Kind { Number, Mark, Text, Service };

  const char* name;
  Kind kind;
  station_blocks::Source source;  ///< Block for what follows from the block
  FieldValue (*read)(const Channel& channel);
};

/// In the order in which they are shown. The service type is nothing where the record names none.
std::span<const RecordField> RecordFields();
/// Null for a name that is none of theirs.
const RecordField* FindRecordField(std::string_view name);

/// A mark as it may be given: yes, true, on or 1, and no, false, off or 0, in any letter case.
std::optional<bool> ParseMark(std::string_view text);

}  // namespace zortunedex::kit

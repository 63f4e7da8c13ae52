// Entries of the stream lists, digital types only; offsets are inside the entry.
#pragma once

#include <cstdint>

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"

namespace station_blocks {

inline constexpr std::uint16_t kStreamSize = 10;
inline constexpr Field kStreamFields[] = {
    {"type", 0, 1},
    {"pid", 2, 2},
    {"lang", 4, 3, Form::Language},
};

inline constexpr std::uint16_t kDataStreamSize = 56;
inline constexpr Field kDataStreamFields[] = {
    {"type", 0, 1},
    {"pid", 2, 2},
    {"lang", 4, 3, Form::Language},
    {"desc", 8, 4},
    {"carouselID", 12, 4},
    {"componentTag", 16, 4},
    {"organizationID", 20, 4},
    {"applicationID", 24, 2},
    {"dataBroadcastID", 26, 2},
    {"associationTag", 28, 4},
    {"sdtIndex", 32, 4},
    {"flags", 36, 4},
};

/// The rows of an entry of that size.
constexpr Rows<Field> EntryFields(std::uint16_t entrySize) {
  if (entrySize == kStreamSize) return kStreamFields;
  return kDataStreamFields;
}

static_assert(check::RowsFit(kStreamFields, kStreamSize));
static_assert(check::RowsFit(kDataStreamFields, kDataStreamSize));

}  // namespace station_blocks

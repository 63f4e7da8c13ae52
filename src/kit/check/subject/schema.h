// What may stand where in the channel files.
#pragma once

#include <optional>
#include <string_view>

#include "core/station_blocks.h"

namespace zortunedex::kit::check::schema {

/// The parts of a channel and of what holds channels.
enum class Part : std::uint8_t {
  Table,
  Country,
  ChannelSet,
  Area,
  SubArea,
  Channel,
  ElementStreams,
  SatelliteParams,
  Entry,       ///< of a stream list
  Components,  ///< of T-DMB
};

/// True for an attribute that the library reads or writes there without a row in a layout.
bool IsOwn(Part part, std::string_view attribute);

/// The rows of a part's attributes; empty for one that has none of its own in the layout.
station_blocks::Rows<station_blocks::Field> FieldsOf(Part part,
                                                     const station_blocks::Layout& layout,
                                                     const station_blocks::StreamList* list);

/// The stream list that an element of ElementStreams belongs to; null when it is in none.
const station_blocks::StreamList* ListOf(const station_blocks::Layout& layout,
                                         std::string_view element);

/// The attributes of ElementStreams that go with a list: how many entries there are, and which of
/// them the host selected; null where there is no such attribute.
struct CountFields {
  const station_blocks::Field* count = nullptr;
  const station_blocks::Field* selected = nullptr;
};
CountFields CountFieldsOf(const station_blocks::Layout& layout, std::size_t countOffset);

/// True for a type whose channels the file holds, and for those that it holds no form of.
bool IsSignal(std::int32_t type);
/// DVB-C and the three ISDB types: their lists leave nothing but empty elements.
bool IsFormless(std::int32_t type);

}  // namespace zortunedex::kit::check::schema

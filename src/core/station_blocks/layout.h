// What the tables of the station blocks are made of: rows that say where a value stands, and the
// layout that holds all rows of one kind of block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace station_blocks {

/// Where a value of a channel lives. Everything but `Block` is reached through the record; a row
/// with such a source and a width has a second home in the block, filled when the file is read.
enum class Source : std::uint8_t {
  Block,
  Name,             ///< IChannelInfo::GetChannelName; read into the block
  DisplayName,      ///< IChannelInfo::GetChannelDspName
  Index,            ///< IChannelInfo::GetChannelIndex
  PhysicalChannel,  ///< _StationTuneInfo::lPhysicalChannel
  Frequency,        ///< _StationTuneInfo::dwFrequency
  OffsetFrequency,  ///< _StationTuneInfo::lOffsetFreq
  TransportStream,  ///< _StationTuneInfo::lTSID
  Favorite,         ///< IChannelInfo::GetFavor
  Lock,             ///< IChannelInfo::GetLock
};

/// How a value becomes text in the file.
enum class Form : std::uint8_t {
  Number,        ///< decimal, as a signed 32-bit number
  Text,          ///< zero-terminated narrow text
  Base64,        ///< base64 of the narrow text
  Language,      ///< three bytes, the low four bits of each packed into one number
  Polarisation,  ///< a word, as every form below
  FecRate,
  Modulation,
  SpectralInversion,
};

enum class Use : std::uint8_t { Both, ReadOnly, WriteOnly };

/// One attribute. `width` is in bytes: 1, 2 or 4 for numbers, the room with the terminator for
/// texts, 0 where nothing stands in the block.
struct Field {
  const char* attribute;
  std::uint16_t offset;
  std::uint16_t width;
  Form form = Form::Number;
  Source source = Source::Block;
  Use use = Use::Both;
};

/// A counted array in the block and the child elements of ElementStreams that hold it.
struct StreamList {
  const char* element;
  std::uint16_t countOffset;
  std::uint16_t offset;     ///< of the first entry
  std::uint16_t capacity;   ///< in entries
  std::uint16_t entrySize;  ///< 10 or 56 bytes
  Use use = Use::Both;
};

/// The components of a T-DMB service: text slots and types in two parallel arrays.
struct ComponentList {
  std::uint16_t countOffset;
  std::uint16_t nameOffset;
  std::uint16_t nameWidth;  ///< of a slot; a name may fill it without a terminator
  std::uint16_t typeOffset;
  std::uint16_t capacity;
};

template <typename T>
struct Rows {
  const T* first = nullptr;
  std::size_t count = 0;

  constexpr Rows() = default;
  template <std::size_t N>
  constexpr Rows(const T (&rows)[N]) : first(rows), count(N) {}
  constexpr const T* begin() const { return first; }
  constexpr const T* end() const { return first + count; }
  constexpr bool Empty() const { return count == 0; }
};

/// Everything about one kind of block. Rows stand in the order in which the file is written.
struct Layout {
  std::uint32_t size;          ///< of the block in bytes
  Rows<Field> channel;         ///< attributes of Channel
  Rows<Field> elementStreams;  ///< attributes of its child ElementStreams; empty: no such child
  Rows<StreamList> lists;      ///< children of ElementStreams
  const ComponentList* components;  ///< children of ElementStreams, T-DMB only
  Rows<Field> satelliteParams;      ///< attributes of its child SatelliteParams, DVB-S only
};

/// The row of an attribute; null when there is none.
constexpr const Field* FindField(Rows<Field> rows, std::string_view attribute) {
  for (const Field& field : rows) {
    if (attribute == field.attribute) return &field;
  }
  return nullptr;
}

/// Offset of an attribute for use as a constant: a name that the rows lack does not compile.
constexpr std::uint16_t OffsetOf(Rows<Field> rows, std::string_view attribute) {
  return FindField(rows, attribute)->offset;
}

}  // namespace station_blocks

// The station blocks: the type-specific bytes behind _StationTuneInfo::pbInformation. One table per
// kind of signal says where each value stands, how wide it is and under which attribute the channel
// file keeps it. Records, codecs, the command-line host and hosts share these tables.
//
// All numbers are little-endian. Bytes that no row names are the host's own and are kept at zero by
// the library. Nothing here depends on alignment: read and write through Fetch and Store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/interfaces.h"

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

// ---------------------------------------------------------------------------------------------
// Entries of the stream lists; offsets are inside the entry.

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

// ---------------------------------------------------------------------------------------------
// Analogue antenna and cable

inline constexpr Field kAnalogChannel[] = {
    {"name", 20, 80, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"freqOffset", 0, 0, Form::Number, Source::OffsetFrequency},
    {"vbiSrvFlag", 16, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"CNI0", 6, 2},
    {"CNI1", 8, 2},
    {"CNI2", 10, 2},
    {"CNI3", 12, 2},
};
inline constexpr Layout kAnalog = {100, kAnalogChannel, {}, {}, nullptr, {}};

// ---------------------------------------------------------------------------------------------
// FM radio

inline constexpr Field kFmRadioChannel[] = {
    {"name", 12, 80, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
};
inline constexpr Layout kFmRadio = {92, kFmRadioChannel, {}, {}, nullptr, {}};

// ---------------------------------------------------------------------------------------------
// ATSC antenna and cable

inline constexpr Field kAtscChannel[] = {
    {"name", 192, 336, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"majorChannel", 4, 4},
    {"minorChannel", 8, 4},
    {"serviceType", 0, 4},
    {"programNumber", 12, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
};
inline constexpr Field kAtscStreams[] = {
    {"videoStream", 16, 4},
    {"numOfVideoStreams", 20, 4},
    {"audioStream", 104, 4},
    {"numOfAudioStreams", 108, 4},
};
inline constexpr StreamList kAtscLists[] = {
    {"VideoStream", 20, 24, 8, kStreamSize},
    {"AudioStream", 108, 112, 8, kStreamSize},
};
inline constexpr Layout kAtsc = {528, kAtscChannel, kAtscStreams, kAtscLists, nullptr, {}};

// ---------------------------------------------------------------------------------------------
// DVB-S

inline constexpr Field kDvbsChannel[] = {
    {"name", 608, 336, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"networkName", 352, 256, Form::Text},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"freqOffset", 0, 0, Form::Number, Source::OffsetFrequency},
    {"serviceType", 0, 4},
    {"serviceID", 4, 4},
    {"PcrPID", 8, 4},
    {"TSID", 0, 0, Form::Number, Source::TransportStream},
    {"ONID", 12, 4},
    {"CA", 948, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"runningStatus", 944, 4},
};
inline constexpr Field kDvbsStreams[] = {
    {"videoStream", 16, 4},         {"numOfVideoStreams", 20, 4},
    {"audioStream", 184, 4},        {"numOfAudioStreams", 188, 4},
    {"teletextStream", 1256, 4},    {"numOfTeletextStreams", 1260, 4},
    {"subtitleStream", 1344, 4},    {"numOfSubtitleStreams", 1348, 4},
    {"numOfDsmccStreams", 1432, 4}, {"numOfMhpAitStreams", 2332, 4},
};
inline constexpr StreamList kDvbsLists[] = {
    {"VideoStream", 20, 24, 16, kStreamSize},
    {"AudioStream", 188, 192, 16, kStreamSize},
    {"TeletextStream", 1260, 1264, 8, kStreamSize},
    {"SubtitleStream", 1348, 1352, 8, kStreamSize},
    {"DsmccStream", 1432, 1436, 16, kDataStreamSize},
    {"MhpAitStream", 2332, 2336, 8, kDataStreamSize},
};
inline constexpr Field kDvbsSatelliteParams[] = {
    {"polarisation", 952, 4, Form::Polarisation},
    {"westPosition", 956, 4},
    {"azimuth", 960, 4},
    {"elevation", 964, 4},
    {"orbitalPosition", 968, 4},
    {"symbolRate", 972, 4},
    {"innerFECRate", 976, 4, Form::FecRate},
    {"modulation", 980, 4, Form::Modulation},
    {"spectralInversion", 996, 4, Form::SpectralInversion},
    {"DiSEqC_Msg", 1000, 256, Form::Text},
    {"LNB_LowFreq", 984, 4},
    {"LNB_HighFreq", 988, 4},
    {"LNB_SwitchFreq", 992, 4},
};
inline constexpr Layout kDvbs = {2784,       kDvbsChannel, kDvbsStreams,
                                 kDvbsLists, nullptr,      kDvbsSatelliteParams};

// ---------------------------------------------------------------------------------------------
// DVB-T: the attributes of Channel are those of DVB-S at the same places

inline constexpr Field kDvbtStreams[] = {
    {"videoStream", 16, 4},          {"numOfVideoStreams", 20, 4},
    {"audioStream", 184, 4},         {"numOfAudioStreams", 188, 4},
    {"teletextStream", 952, 4},      {"numOfTeletextStreams", 956, 4},
    {"subtitleStream", 1040, 4},     {"numOfSubtitleStreams", 1044, 4},
    {"dsmccStream", 1128, 4},        {"numOfDsmccStreams", 1132, 4},
    {"numOfMhpAitStreams", 2032, 4},
};
inline constexpr StreamList kDvbtLists[] = {
    {"VideoStream", 20, 24, 16, kStreamSize},
    {"AudioStream", 188, 192, 16, kStreamSize},
    {"TeletextStream", 956, 960, 8, kStreamSize},
    {"SubtitleStream", 1044, 1048, 8, kStreamSize},
    {"DsmccStream", 1132, 1136, 16, kDataStreamSize},
    {"MhpAitStream", 2032, 2036, 8, kDataStreamSize},
};
inline constexpr Layout kDvbt = {2484, kDvbsChannel, kDvbtStreams, kDvbtLists, nullptr, {}};

// ---------------------------------------------------------------------------------------------
// DVB-H

inline constexpr Field kDvbhChannel[] = {
    {"name", 448, 424, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"networkName", 192, 256, Form::Text},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"freqOffset", 0, 0, Form::Number, Source::OffsetFrequency},
    {"serviceType", 0, 4},
    {"serviceID", 4, 4},
    {"PcrPID", 8, 4},
    {"TSID", 0, 0, Form::Number, Source::TransportStream},
    {"ONID", 12, 4},
    {"CA", 876, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"runningStatus", 872, 4},
    {"VideoIP", 880, 64, Form::Text},
    {"VideoPort", 944, 4},
    {"VideoPID", 948, 4},
    {"AudioIP", 952, 64, Form::Text},
    {"AudioPort", 1016, 4},
    {"AudioPID", 1020, 4},
    {"EsgIP", 1024, 64, Form::Text},
    {"EsgPort", 1088, 4},
    {"EsgPID", 1092, 4},
};
/// DVB-H and T-DMB have eight audio and video streams each, at the same places.
inline constexpr Field kDvbhStreams[] = {
    {"videoStream", 16, 4},
    {"numOfVideoStreams", 20, 4},
    {"audioStream", 104, 4},
    {"numOfAudioStreams", 108, 4},
};
inline constexpr StreamList kDvbhLists[] = {
    {"VideoStream", 20, 24, 8, kStreamSize},
    {"AudioStream", 108, 112, 8, kStreamSize},
};
inline constexpr Layout kDvbh = {1096, kDvbhChannel, kDvbhStreams, kDvbhLists, nullptr, {}};

// ---------------------------------------------------------------------------------------------
// T-DMB

inline constexpr Field kTdmbChannel[] = {
    {"name", 448, 336, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"runningStatus", 784, 4},
    {"EnsembelLab", 192, 256, Form::Text},  // the spelling of the files, kept
    {"BitRate", 792, 4},
};
// The component index is written with an underscore and looked for with a blank, which no attribute
// can hold: it reads back as 0. Files and hosts rely on it. The streams are read where a file has
// them and never written.
inline constexpr Field kTdmbStreams[] = {
    {"ServiceID", 4, 4},
    {"Component_index", 796, 4, Form::Number, Source::Block, Use::WriteOnly},
    {"Component index", 796, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfComponents", 800, 4},
    {"ServiceType", 0, 4},
    {"SubChannelID", 3176, 4},
    {"StreamType", 3180, 4},
    {"videoStream", 16, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfVideoStreams", 20, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"audioStream", 104, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfAudioStreams", 108, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"teletextStream", 3184, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfTeletextStreams", 3188, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"subtitleStream", 3272, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfSubtitleStreams", 3276, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"dsmccStream", 3360, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfDsmccStreams", 3364, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfMhpAitStreams", 4264, 4, Form::Number, Source::Block, Use::ReadOnly},
};
inline constexpr StreamList kTdmbLists[] = {
    {"VideoStream", 20, 24, 8, kStreamSize, Use::ReadOnly},
    {"AudioStream", 108, 112, 8, kStreamSize, Use::ReadOnly},
    {"TeletextStream", 3188, 3192, 8, kStreamSize, Use::ReadOnly},
    {"SubtitleStream", 3276, 3280, 8, kStreamSize, Use::ReadOnly},
    {"DsmccStream", 3364, 3368, 16, kDataStreamSize, Use::ReadOnly},
    {"MhpAitStream", 4264, 4268, 8, kDataStreamSize, Use::ReadOnly},
};
/// Eight components: the room of the types ends where the sub-channel identifier begins.
inline constexpr ComponentList kTdmbComponents = {800, 1064, 8, 3144, 8};
inline constexpr Layout kTdmb = {4716,       kTdmbChannel,     kTdmbStreams,
                                 kTdmbLists, &kTdmbComponents, {}};

// ---------------------------------------------------------------------------------------------
// ISDB-T one-segment

inline constexpr Field kOneSegChannel[] = {
    {"name", 608, 80, Form::Base64, Source::Name},
    {"nameDisplay", 0, 0, Form::Base64, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 2572, 4, Form::Number, Source::PhysicalChannel},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"Frequency", 0, 0, Form::Number, Source::Frequency},
    {"NetworkID", 12, 4},
    {"ServiceID", 4, 4},
};
inline constexpr Field kOneSegStreams[] = {
    {"videoStream", 16, 4},          {"numOfVideoStreams", 20, 4},
    {"audioStream", 184, 4},         {"numOfAudioStreams", 188, 4},
    {"teletextStream", 1040, 4},     {"numOfTeletextStreams", 1044, 4},
    {"subtitleStream", 1128, 4},     {"numOfSubtitleStreams", 1132, 4},
    {"dsmccStream", 1216, 4},        {"numOfDsmccStreams", 1220, 4},
    {"numOfMhpAitStreams", 2120, 4},
};
inline constexpr StreamList kOneSegLists[] = {
    {"VideoStream", 20, 24, 16, kStreamSize},
    {"AudioStream", 188, 192, 16, kStreamSize},
    {"TeletextStream", 1044, 1048, 8, kStreamSize},
    {"SubtitleStream", 1132, 1136, 8, kStreamSize},
    {"DsmccStream", 1220, 1224, 16, kDataStreamSize},
    {"MhpAitStream", 2120, 2124, 8, kDataStreamSize},
};
inline constexpr Layout kOneSeg = {2580, kOneSegChannel, kOneSegStreams, kOneSegLists, nullptr, {}};

// ---------------------------------------------------------------------------------------------
// Access

/// The layout of a signal type; null where stations have no block (composite, S-Video, AM, DVB-C,
/// the three ISDB types, unknown).
constexpr const Layout* Find(InputSignalType signalType) {
  switch (signalType) {
    case InputSignalAnalogAntenna:
    case InputSignalAnalogCable:
      return &kAnalog;
    case InputSignalFMRadio:
      return &kFmRadio;
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
      return &kAtsc;
    case InputSignalDVBSatellite:
      return &kDvbs;
    case InputSignalDVBTerrestrial:
      return &kDvbt;
    case InputSignalDVBHandheld:
      return &kDvbh;
    case InputSignalTDMBMobile:
      return &kTdmb;
    case InputSignalISDBTerrestrialOneSeg:
      return &kOneSeg;
    default:
      return nullptr;
  }
}

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

/// Little-endian value of 1 to 4 bytes.
constexpr std::uint32_t Fetch(const BYTE* bytes, std::size_t width) {
  std::uint32_t value = 0;
  for (std::size_t i = width; i-- > 0;) value = value << 8 | bytes[i];
  return value;
}

/// Stores the low bytes of a value.
constexpr void Store(BYTE* bytes, std::size_t width, std::uint32_t value) {
  for (std::size_t i = 0; i < width; ++i) bytes[i] = static_cast<BYTE>(value >> (8 * i));
}

/// Three language bytes as one number: the low four bits of each, the first in the low nibble.
constexpr std::uint32_t FetchLanguage(const BYTE* bytes) {
  return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 4 |
         static_cast<std::uint32_t>(bytes[2]) << 8;
}

/// The reverse; only twelve bits are stored.
constexpr void StoreLanguage(BYTE* bytes, std::uint32_t value) {
  for (std::size_t i = 0; i < 3; ++i) bytes[i] = static_cast<BYTE>(value >> (4 * i) & 0xF);
}

// ---------------------------------------------------------------------------------------------
// No row may leave its block or touch another one that is used in the same direction.

namespace check {

struct Span {
  std::size_t first;
  std::size_t last;  // one past
};

constexpr bool Apart(Span a, Span b) { return a.last <= b.first || b.last <= a.first; }

constexpr bool RowsFit(Rows<Field> rows, std::size_t size) {
  for (const Field& a : rows) {
    if (a.offset + a.width > size) return false;
    for (const Field& b : rows) {
      const bool sameDirection = a.use == Use::Both || b.use == Use::Both || a.use == b.use;
      const Span first = {a.offset, std::size_t{a.offset} + a.width};
      const Span second = {b.offset, std::size_t{b.offset} + b.width};
      if (&a != &b && a.width != 0 && b.width != 0 && sameDirection && !Apart(first, second)) {
        return false;
      }
    }
  }
  return true;
}

constexpr bool RowsApart(Rows<Field> rows, Span span) {
  for (const Field& row : rows) {
    if (row.width != 0 && !Apart({row.offset, std::size_t{row.offset} + row.width}, span))
      return false;
  }
  return true;
}

constexpr bool RowsApart(Rows<Field> rows, Rows<Field> others) {
  for (const Field& other : others) {
    if (other.width == 0) continue;
    if (!RowsApart(rows, {other.offset, std::size_t{other.offset} + other.width})) return false;
  }
  return true;
}

constexpr bool SpanFree(const Layout& layout, Span span) {
  return span.last <= layout.size && RowsApart(layout.channel, span) &&
         RowsApart(layout.elementStreams, span) && RowsApart(layout.satelliteParams, span);
}

constexpr Span SpanOf(const StreamList& list) {
  return {list.offset, list.offset + std::size_t{list.capacity} * list.entrySize};
}

constexpr bool ListsFit(const Layout& layout) {
  for (const StreamList& list : layout.lists) {
    if (!SpanFree(layout, SpanOf(list))) return false;
    for (const StreamList& other : layout.lists) {
      if (&list != &other && !Apart(SpanOf(list), SpanOf(other))) return false;
    }
  }
  return true;
}

// Not through layout.components: with sanitizers on, the compiler does not compare addresses in
// constant expressions.
constexpr bool ComponentsFit(const Layout& layout, const ComponentList& parts) {
  return SpanFree(layout, {parts.nameOffset,
                           parts.nameOffset + std::size_t{parts.nameWidth} * parts.capacity}) &&
         SpanFree(layout, {parts.typeOffset, parts.typeOffset + std::size_t{4} * parts.capacity});
}

constexpr bool Fits(const Layout& layout) {
  return RowsFit(layout.channel, layout.size) && RowsFit(layout.elementStreams, layout.size) &&
         RowsFit(layout.satelliteParams, layout.size) &&
         RowsApart(layout.channel, layout.elementStreams) &&
         RowsApart(layout.channel, layout.satelliteParams) &&
         RowsApart(layout.elementStreams, layout.satelliteParams) && ListsFit(layout);
}

static_assert(Fits(kAnalog) && Fits(kFmRadio) && Fits(kAtsc) && Fits(kDvbs) && Fits(kDvbt));
static_assert(Fits(kDvbh) && Fits(kTdmb) && Fits(kOneSeg));
static_assert(ComponentsFit(kTdmb, kTdmbComponents));
static_assert(RowsFit(kStreamFields, kStreamSize) && RowsFit(kDataStreamFields, kDataStreamSize));

}  // namespace check

}  // namespace station_blocks

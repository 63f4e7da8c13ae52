// The streams of a channel.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "api/zortunedex/fields.hpp"

namespace zortunedex {

/// A stream of sound, picture, teletext or subtitles.
struct stream {
  std::int64_t type = 0;      ///< 0 to 255: as the programme map has it
  std::int64_t pid = 0;       ///< 0 to 65535: packet identifier
  std::int64_t language = 0;  ///< 0 to 4095: the low four bits of three letters, the first lowest

  bool operator==(const stream&) const = default;
};

/// A stream of data (DSM-CC, MHP application information).
struct data_stream : stream {
  std::int64_t descriptor = 0;         ///< 32 bits, as all that say nothing else
  std::int64_t carousel_id = 0;        ///< identifier of the carousel
  std::int64_t component_tag = 0;      ///< tag of the component
  std::int64_t organization_id = 0;    ///< organisation of the application
  std::int64_t application_id = 0;     ///< 0 to 65535
  std::int64_t data_broadcast_id = 0;  ///< 0 to 65535
  std::int64_t association_tag = 0;    ///< tag of the association
  std::int64_t sdt_index = 0;          ///< place in the service description table
  std::int64_t flags = 0;              ///< flags of the application

  bool operator==(const data_stream&) const = default;
};

/// A component of a T-DMB service.
struct component {
  std::string name;       ///< UTF-8, at most 7 bytes in the code page
  std::int64_t type = 0;  ///< 32 bits

  bool operator==(const component&) const = default;
};

namespace detail {

/// The places of a stream's values, in the order of the rows of an entry.
template <typename Stream>
inline constexpr auto kMembers = nullptr;
template <>
inline constexpr std::int64_t stream::*kMembers<stream>[] = {&stream::type, &stream::pid,
                                                             &stream::language};
template <>
inline constexpr std::int64_t data_stream::*kMembers<data_stream>[] = {
    &data_stream::type,
    &data_stream::pid,
    &data_stream::language,
    &data_stream::descriptor,
    &data_stream::carousel_id,
    &data_stream::component_tag,
    &data_stream::organization_id,
    &data_stream::application_id,
    &data_stream::data_broadcast_id,
    &data_stream::association_tag,
    &data_stream::sdt_index,
    &data_stream::flags};

/// A number of a row as the file has it: four bytes are signed.
inline std::int64_t FetchNumber(const BYTE* place, const Field& field) {
  if (field.form == Form::Language) return station_blocks::FetchLanguage(place);
  const std::uint32_t value = station_blocks::Fetch(place, field.width);
  return field.width < 4 ? std::int64_t{value} : static_cast<std::int32_t>(value);
}

/// True where a row of so many bytes can hold the number.
constexpr bool Holds(std::size_t width, Form form, std::int64_t value) {
  if (form == Form::Language) return value >= 0 && value <= 0xFFF;
  if (width == 1) return value >= 0 && value <= UINT8_MAX;
  if (width == 2) return value >= 0 && value <= UINT16_MAX;
  return value >= INT32_MIN && value <= UINT32_MAX;
}

inline void StoreNumber(BYTE* place, const Field& field, std::int64_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  if (field.form == Form::Language) {
    station_blocks::StoreLanguage(place, bits);
  } else {
    station_blocks::Store(place, field.width, bits);
  }
}

template <typename Stream>
Stream FetchStream(const BYTE* entry, const StreamList& list) {
  Stream value;
  std::size_t i = 0;
  for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
    value.*kMembers<Stream>[i++] = FetchNumber(entry + field.offset, field);
  }
  return value;
}

/// Name of the first value that its row cannot hold, null when all were stored.
template <typename Stream>
const char* StoreStream(BYTE* entry, const StreamList& list, const Stream& value) {
  std::size_t i = 0;
  for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
    const std::int64_t number = value.*kMembers<Stream>[i++];
    if (!Holds(field.width, field.form, number)) return field.attribute;
    StoreNumber(entry + field.offset, field, number);
  }
  return nullptr;
}

}  // namespace detail

/// The type of the entries of a list of streams: data_stream for "DsmccStream" and "MhpAitStream",
/// stream for all others.
template <field_name Element>
using stream_type =
    std::conditional_t<detail::EntrySizeOf(Element.view()) == station_blocks::kDataStreamSize,
                       data_stream, stream>;

}  // namespace zortunedex

// The values of a station block, fetched and stored one byte at a time.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/com.h"

namespace station_blocks {

/// Little-endian value of 1 to 4 bytes.
constexpr std::uint32_t Fetch(const BYTE* bytes, std::size_t width) {
  std::uint32_t value = 0;
  for (std::size_t i = width; i-- > 0;) value = value << 8 | bytes[i];
  return value;
}

/// Stores the low bytes of a value.
constexpr void Store(BYTE* bytes, std::size_t width, std::uint32_t value) {
  // Most values, as one.
  if (width == 4) {
    for (std::size_t i = 0; i < 4; ++i) bytes[i] = static_cast<BYTE>(value >> (8 * i));
    return;
  }
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

}  // namespace station_blocks

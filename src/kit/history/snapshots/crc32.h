#pragma once

#include <cstdint>
#include <string_view>

/// The checksum that zip files and many tools have, of all bytes.
std::uint32_t Crc32(std::string_view bytes);

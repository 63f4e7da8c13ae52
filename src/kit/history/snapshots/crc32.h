#pragma once

#include <cstdint>
#include <string_view>

namespace zortunedex::kit {

/// The checksum that zip files and many tools have, of all bytes: of these behind others whose sum
/// it was `before`.
std::uint32_t Crc32(std::string_view bytes, std::uint32_t before = 0);

}  // namespace zortunedex::kit

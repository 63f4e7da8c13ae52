#include "kit/history/snapshots/crc32.h"

#include <array>
#include <cstddef>

namespace zortunedex::kit {

namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;
/// Bytes that are taken in at once.
constexpr std::size_t kStride = 16;

using Tables = std::array<std::array<std::uint32_t, 256>, kStride>;

/// Table k holds what a byte does to the sum when k more bytes follow it.
constexpr Tables MakeTables() {
  Tables tables{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t sum = byte;
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? kPolynomial : 0);
    tables[0][byte] = sum;
  }
  for (std::size_t k = 1; k < kStride; ++k) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::uint32_t before = tables[k - 1][byte];
      tables[k][byte] = (before >> 8) ^ tables[0][before & 0xFF];
    }
  }
  return tables;
}

constexpr Tables kTables = MakeTables();

std::uint32_t ByteAt(std::string_view bytes, std::size_t place) {
  return static_cast<unsigned char>(bytes[place]);
}

std::uint32_t WordAt(std::string_view bytes, std::size_t place) {
  return ByteAt(bytes, place) | ByteAt(bytes, place + 1) << 8 | ByteAt(bytes, place + 2) << 16 |
         ByteAt(bytes, place + 3) << 24;
}

/// What four bytes do to the sum when that many more follow them.
std::uint32_t SumOf(std::uint32_t word, std::size_t behind) {
  return kTables[behind + 3][word & 0xFF] ^ kTables[behind + 2][(word >> 8) & 0xFF] ^
         kTables[behind + 1][(word >> 16) & 0xFF] ^ kTables[behind][word >> 24];
}

}  // namespace

std::uint32_t Crc32(std::string_view bytes, std::uint32_t before) {
  std::uint32_t sum = ~before;
  while (bytes.size() >= kStride) {
    sum = SumOf(WordAt(bytes, 0) ^ sum, 12) ^ SumOf(WordAt(bytes, 4), 8) ^
          SumOf(WordAt(bytes, 8), 4) ^ SumOf(WordAt(bytes, 12), 0);
    bytes.remove_prefix(kStride);
  }
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    sum = (sum >> 8) ^ kTables[0][(sum ^ ByteAt(bytes, i)) & 0xFF];
  }
  return ~sum;
}

}  // namespace zortunedex::kit

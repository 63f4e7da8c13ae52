#include "kit/history/snapshots/crc32.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;
/// Bytes that are taken in at once.
constexpr std::size_t kStride = 8;

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

}  // namespace

std::uint32_t Crc32(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  while (bytes.size() >= kStride) {
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < kStride; ++i) {
      const std::uint32_t mixed = i < 4 ? (sum >> (8 * i)) & 0xFF : 0;
      next ^= kTables[kStride - 1 - i][ByteAt(bytes, i) ^ mixed];
    }
    sum = next;
    bytes.remove_prefix(kStride);
  }
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    sum = (sum >> 8) ^ kTables[0][(sum ^ ByteAt(bytes, i)) & 0xFF];
  }
  return ~sum;
}

#include "kit/history/snapshots/crc32.h"

#include <gtest/gtest.h>

#include "support/random.h"

namespace zortunedex::kit {

namespace {

/// Bit by bit.
std::uint32_t SlowCrc32(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

TEST(Crc32, HasTheKnownValues) {
  EXPECT_EQ(0U, Crc32(""));
  EXPECT_EQ(0xE8B7BE43U, Crc32("a"));
  EXPECT_EQ(0xCBF43926U, Crc32("123456789"));
}

TEST(Crc32, IsThatOfEveryByteAtEveryLength) {
  Random random(7);
  std::string bytes;
  for (int length = 0; length < 100; ++length) {
    EXPECT_EQ(SlowCrc32(bytes), Crc32(bytes)) << length;
    const std::string_view behind = std::string_view(bytes).substr(bytes.size() / 3);
    EXPECT_EQ(Crc32(bytes), Crc32(behind, Crc32(bytes.substr(0, bytes.size() / 3)))) << length;
    bytes += static_cast<char>(random(256));
  }
}

}  // namespace

}  // namespace zortunedex::kit

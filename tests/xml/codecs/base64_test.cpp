#include "xml/codecs/base64.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

// Buffers of exactly the stated size: one byte too many is seen by the sanitizer.
std::string EncodedExactly(const std::string& bytes, LONG* count = nullptr) {
  std::vector<char> target(Base64EncodedSize(bytes.size()), '?');
  const LONG written = Base64Encode(reinterpret_cast<const BYTE*>(bytes.data()),
                                    static_cast<LONG>(bytes.size()), target.data());
  if (count != nullptr) *count = written;
  EXPECT_EQ('\0', target[static_cast<std::size_t>(written)]);
  return target.data();
}

std::string Decoded(const std::string& text) {
  std::vector<BYTE> target(Base64DecodedSize(text.size()), '?');
  const LONG written = Base64Decode(text.data(), static_cast<LONG>(text.size()), target.data());
  EXPECT_EQ(0, target[static_cast<std::size_t>(written)]);
  return {target.begin(), target.begin() + written};
}

}  // namespace

TEST(Base64, OneLetter) {
  LONG count = 0;
  EXPECT_EQ("TQ==", EncodedExactly("M", &count));
  EXPECT_EQ(4, count);
  EXPECT_EQ("M", Decoded("TQ=="));
}

TEST(Base64, WholeAndPaddedGroups) {
  const std::pair<const char*, const char*> cases[] = {
      {"f", "Zg=="},         {"fo", "Zm8="},         {"foo", "Zm9v"},      {"foob", "Zm9vYg=="},
      {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"}, {"\xFB\xFF", "+/8="}, {"\xFF\xEF\xBE", "/+++"},
  };
  for (const auto& [bytes, text] : cases) {
    LONG count = 0;
    EXPECT_EQ(text, EncodedExactly(bytes, &count));
    EXPECT_EQ(static_cast<LONG>(std::strlen(text)), count);
    EXPECT_EQ(bytes, Decoded(text));
  }
}

TEST(Base64, EveryByteComesBack) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(bytes, Decoded(EncodedExactly(bytes)));
  const std::string text = EncodedExactly(bytes);
  EXPECT_EQ(std::string::npos, text.find_first_of("\r\n")) << "no line breaks are written";
}

TEST(Base64, RandomBytesComeBack) {
  std::mt19937 random(1);
  for (std::size_t length = 1; length < 300; ++length) {
    std::string bytes(length, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    const std::string text = EncodedExactly(bytes);
    EXPECT_EQ(Base64EncodedSize(length) - 1, text.size());
    EXPECT_EQ(bytes, Decoded(text));
  }
}

TEST(Base64, LineBreaksAreSkippedOneByOne) {
  EXPECT_EQ("foobar", Decoded("Zm9v\r\nYmFy"));
  EXPECT_EQ("foobar", Decoded("\nZ\rm9\r\n\nvYm\rFy\r\n"));
  EXPECT_EQ("fo", Decoded("Zm\r\n8="));
  EXPECT_EQ("", Decoded("\r\n\r\n"));
}

TEST(Base64, PaddingEndsItsGroup) {
  EXPECT_EQ("f", Decoded("Zg"));
  EXPECT_EQ("fo", Decoded("Zm8"));
  EXPECT_EQ("foof", Decoded("Zm9vZg=="));
  EXPECT_EQ("ff", Decoded("Zg==Zg==")) << "a group behind a padded one is read";
  EXPECT_EQ("f", Decoded("Zg=v")) << "nothing behind the sign counts inside its group";
  EXPECT_EQ("", Decoded("===="));
  EXPECT_EQ("", Decoded("Z")) << "six bits make no byte";
}

TEST(Base64, OtherCharactersCountAsZeroBits) {
  EXPECT_EQ(std::string("\0\0\0", 3), Decoded("****"));
  EXPECT_EQ(Decoded("AAAA"), Decoded("\x80\xFF -"));
  EXPECT_EQ(Decoded("ZA9v"), Decoded("Z!9v"));
}

TEST(Base64, NothingToDo) {
  const BYTE bytes[] = {1, 2, 3};
  char text[8] = "stays";
  BYTE target[8] = {9};
  EXPECT_EQ(0, Base64Encode(nullptr, 3, text));
  EXPECT_EQ(0, Base64Encode(bytes, 0, text));
  EXPECT_EQ(0, Base64Encode(bytes, -1, text));
  EXPECT_EQ(0, Base64Encode(bytes, 3, nullptr));
  EXPECT_STREQ("stays", text);
  EXPECT_EQ(0, Base64Decode(nullptr, 4, target));
  EXPECT_EQ(0, Base64Decode("TQ==", 0, target));
  EXPECT_EQ(0, Base64Decode("TQ==", -4, target));
  EXPECT_EQ(0, Base64Decode("TQ==", 4, nullptr));
  EXPECT_EQ(9, target[0]);
}

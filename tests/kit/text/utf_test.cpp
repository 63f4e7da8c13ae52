#include "kit/text/utf.h"

#include <gtest/gtest.h>

#include "kit/text/printable.h"

namespace zortunedex::kit {

namespace {

std::string Bytes(const char8_t* text) {
  const std::u8string utf8 = text;
  return {utf8.begin(), utf8.end()};
}

TEST(Utf, GoesThereAndBack) {
  for (const char8_t* text : {u8"", u8"ASCII", u8"Käse", u8"地上", u8"\U0001F4FA!"}) {
    const std::optional<WideText> wide = utf::ToWide(Bytes(text));
    ASSERT_TRUE(wide);
    EXPECT_EQ(Bytes(text), utf::FromWide(*wide));
  }
}

TEST(Utf, RefusesWhatIsNotWellFormed) {
  for (const char* bytes : {"\x80", "\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
                            "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "a\xE5\x9C"}) {
    EXPECT_FALSE(utf::ToWide(bytes)) << bytes;
  }
}

TEST(Utf, ReplacesLoneSurrogates) {
  const WideText wide = {static_cast<OLECHAR>(0xDC00), OLECHAR{'a'}, static_cast<OLECHAR>(0xD800)};
  EXPECT_EQ(Bytes(u8"\uFFFDa\uFFFD"), utf::FromWide(wide));
}

TEST(Printable, ShowsControlCharactersAsTheirCodes) {
  EXPECT_EQ("a\\x1Bb\\x0A", Printable(std::string_view("a\x1B"
                                                       "b\n")));
  EXPECT_EQ("\\x9B\\x7F", Printable(std::string_view("\xC2\x9B\x7F")));
  EXPECT_EQ(Bytes(u8"\uFFFDä"), Printable(std::string_view("\xFF\xC3\xA4")));
  const WideText wide = {OLECHAR{1}, OLECHAR{'x'}, static_cast<OLECHAR>(0xD83D)};
  EXPECT_EQ(Bytes(u8"\\x01x\uFFFD"), Printable(WideView(wide)));
}

}  // namespace

}  // namespace zortunedex::kit

#include "kit/text/ascii.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

TEST(Ascii, ReadsDecimalAndHexadecimalNumbers) {
  EXPECT_EQ(0, ParseNumber("0"));
  EXPECT_EQ(-5, ParseNumber("-5"));
  EXPECT_EQ(27, ParseNumber("0x1B"));
  EXPECT_EQ(-27, ParseNumber("-0X1b"));
  EXPECT_EQ(4294967296, ParseNumber("4294967296"));
}

TEST(Ascii, RefusesWhatIsNoNumber) {
  for (const char* text : {"", "-", "--5", "0x", "0x-1", "1 ", " 1", "+1", "1a", "0xg", "1.5",
                           "99999999999999999999"}) {
    EXPECT_EQ(std::nullopt, ParseNumber(text)) << text;
  }
}

TEST(Ascii, KeepsNumbersInTheirRange) {
  EXPECT_EQ(1, ParseNumber("1", 1, 4));
  EXPECT_EQ(4, ParseNumber("4", 1, 4));
  EXPECT_EQ(std::nullopt, ParseNumber("0", 1, 4));
  EXPECT_EQ(std::nullopt, ParseNumber("5", 1, 4));
  EXPECT_EQ(std::nullopt, ParseNumber("x", 1, 4));
}

TEST(Ascii, ComparesLettersInAnyCase) {
  EXPECT_TRUE(EqualIgnoringCase("LinearH", "lINEARh"));
  EXPECT_TRUE(EqualIgnoringCase("", ""));
  EXPECT_FALSE(EqualIgnoringCase("a", "ab"));
  EXPECT_FALSE(EqualIgnoringCase("[", "{"));
  EXPECT_FALSE(EqualIgnoringCase("\xC3\x84", "\xC3\xA4"));
}

}  // namespace

}  // namespace zortunedex::kit

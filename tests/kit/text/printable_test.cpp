#include "kit/text/printable.h"

#include <gtest/gtest.h>

#include <string>

namespace zortunedex::kit {

namespace {

std::string Wide(OLECHAR unit) { return Printable(WideView(&unit, 1)); }

TEST(Printable, EscapesEveryControlCharacterAndNoOther) {
  EXPECT_EQ("\\x00", Wide(0));
  EXPECT_EQ("\\x1B", Wide(0x1B));
  EXPECT_EQ("\\x1F", Wide(0x1F));
  EXPECT_EQ(" ", Wide(0x20));
  EXPECT_EQ("~", Wide(0x7E));
  EXPECT_EQ("\\x7F", Wide(0x7F));
  EXPECT_EQ("\\x80", Wide(0x80));
  EXPECT_EQ("\\x9F", Wide(0x9F));
  EXPECT_EQ("\xC2\xA0", Wide(0xA0));
  EXPECT_EQ("\xEF\xBF\xBE", Wide(0xFFFE));
  EXPECT_EQ("\xEF\xBF\xBD", Wide(0xD800));
}

TEST(Printable, TakesUtf8Alike) {
  EXPECT_EQ("~\\x7F\\x80\\x9F\xC2\xA0\\x1F ", Printable("~\x7F\xC2\x80\xC2\x9F\xC2\xA0\x1F "));
  EXPECT_EQ(
      "a\xEF\xBF\xBD"
      "b",
      Printable("a\xFF"
                "b"));
}

}  // namespace

}  // namespace zortunedex::kit

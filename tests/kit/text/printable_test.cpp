#include "kit/text/printable.h"

#include <gtest/gtest.h>

#include <string>

namespace zortunedex::kit {

namespace {

std::string PrintableUnit(OLECHAR unit) { return Printable(WideView(&unit, 1)); }

TEST(Printable, EscapesEveryControlCharacterAndNoOther) {
  EXPECT_EQ("\\x00", PrintableUnit(0));
  EXPECT_EQ("\\x1B", PrintableUnit(0x1B));
  EXPECT_EQ("\\x1F", PrintableUnit(0x1F));
  EXPECT_EQ(" ", PrintableUnit(0x20));
  EXPECT_EQ("~", PrintableUnit(0x7E));
  EXPECT_EQ("\\x7F", PrintableUnit(0x7F));
  EXPECT_EQ("\\x80", PrintableUnit(0x80));
  EXPECT_EQ("\\x9F", PrintableUnit(0x9F));
  EXPECT_EQ("\xC2\xA0", PrintableUnit(0xA0));
  EXPECT_EQ("\xEF\xBF\xBE", PrintableUnit(0xFFFE));
  EXPECT_EQ("\xEF\xBF\xBD", PrintableUnit(0xD800));
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

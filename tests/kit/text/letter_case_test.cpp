#include "kit/text/letter_case.h"

#include <gtest/gtest.h>

#include "kit/text/utf.h"

namespace zortunedex::kit {

namespace {

bool Same(std::string_view a, std::string_view b) {
  return WithoutCase(*utf::ToWide(a)) == WithoutCase(*utf::ToWide(b));
}

TEST(LetterCase, IsOneOfLatinGreekCyrillicAndArmenian) {
  EXPECT_TRUE(Same("DAS ERSTE", "das erste"));
  EXPECT_TRUE(Same("K\u00D6LN \u00C6\u00D8\u00DE", "k\u00F6ln \u00E6\u00F8\u00FE"));
  EXPECT_TRUE(Same("\u0104\u0118\u0141\u0143\u017B\u0178", "\u0105\u0119\u0142\u0144\u017C\u00FF"));
  EXPECT_TRUE(Same("\u1EA4\u1EF8\u1E9E\u01A0\u01AF", "\u1EA5\u1EF9\u00DF\u01A1\u01B0"));
  EXPECT_TRUE(Same("\u0391\u0392\u03A3\u0386\u038E\u038C", "\u03B1\u03B2\u03C2\u03AC\u03CD\u03CC"));
  EXPECT_TRUE(Same("\u041F\u0415\u0420\u0412\u042B\u0419 \u0401\u0490",
                   "\u043F\u0435\u0440\u0432\u044B\u0439 \u0451\u0491"));
  EXPECT_TRUE(Same("\u0540\u0531\u0545", "\u0570\u0561\u0575"));
  EXPECT_TRUE(Same("\uFF2E\uFF28\uFF2B", "\uFF4E\uFF48\uFF4B"));
}

TEST(LetterCase, KeepsOtherCharactersApart) {
  EXPECT_FALSE(Same("\u00D7", "\u00F7"));  // signs among the letters
  EXPECT_FALSE(Same("\u0130", "i"));
  EXPECT_FALSE(Same("\u0138", "\u0139"));
  EXPECT_FALSE(Same("\u00DF", "ss"));
  EXPECT_FALSE(Same("[", "{"));
  EXPECT_TRUE(Same("\U0001F600\u65E5", "\U0001F600\u65E5"));
}

TEST(LetterCase, PartsAreFound) {
  const auto holds = [](std::string_view text, std::string_view part) {
    return HoldsIgnoringCase(*utf::ToWide(text), *utf::ToWide(part));
  };
  EXPECT_TRUE(holds("WDR K\u00F6ln", "k\u00D6L"));
  EXPECT_TRUE(holds("WDR", ""));
  EXPECT_FALSE(holds("WDR", "wdr 5"));
}

}  // namespace

}  // namespace zortunedex::kit

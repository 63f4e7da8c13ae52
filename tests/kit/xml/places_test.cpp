#include "kit/xml/text/places.h"

#include <gtest/gtest.h>

#include <string>

#include "support/random.h"

namespace zortunedex::kit {

namespace {

using markup::Place;
using markup::Places;

TEST(Places, CountLinesAndColumnsFromOne) {
  const Places places("ab\ncd\r\nef\rg");
  EXPECT_EQ((Place{1, 1}), places.Of(0));
  EXPECT_EQ((Place{1, 3}), places.Of(2));
  EXPECT_EQ((Place{2, 1}), places.Of(3));
  EXPECT_EQ((Place{2, 3}), places.Of(5));
  EXPECT_EQ((Place{3, 1}), places.Of(7));
  EXPECT_EQ((Place{4, 1}), places.Of(10));
  EXPECT_EQ((Place{4, 2}), places.Of(11));
  EXPECT_EQ((Place{4, 2}), places.Of(500));
}

TEST(Places, CountCharactersNotBytes) {
  const Places places("\xEF\xBB\xBF\xC3\xA9\xE3\x82\xBD<");
  EXPECT_EQ((Place{1, 1}), places.Of(0));
  EXPECT_EQ((Place{1, 1}), places.Of(3));
  EXPECT_EQ((Place{1, 3}), places.Of(8));
}

TEST(Places, HaveOneForAnEmptyText) { EXPECT_EQ((Place{1, 1}), Places("").Of(0)); }

TEST(Places, AreTheSameFarIntoALongText) {
  Random random(3);
  std::string text;
  while (text.size() < 20000) {
    static constexpr const char* kParts[] = {"abc", "\n", "\r\n", "\r", "\xC3\xA9", "      "};
    text += kParts[random(6)];
  }
  const Places places(text);
  Place expected;
  for (std::size_t i = 0; i < text.size(); ++i) {
    ASSERT_EQ(expected, places.Of(i)) << i;
    const bool isFirstOfTwo = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if ((text[i] == '\n' || text[i] == '\r') && !isFirstOfTwo) {
      expected = {expected.line + 1, 1};
    } else if ((text[i] & 0xC0) != 0x80) {
      ++expected.column;
    }
  }
}

}  // namespace

}  // namespace zortunedex::kit

#include "platform/windows/text/code_page.h"

#include <gtest/gtest.h>

#include "support/expect.h"

namespace {

constexpr UINT kJapanese = 932;
constexpr UINT kWestern = 1252;

// "チャ" in Shift-JIS; the trail byte of the second lead is a plain ASCII letter's range.
constexpr char kKatakana[] = "\x83\x60\x83\x83";

TEST(CodePage, WidensDoubleByteText) {
  ExpectText(L"\u30C1\u30E3", code_page::Widen(kJapanese, kKatakana).Get());
  ExpectText(L"\u00E9A", code_page::Widen(kWestern,
                                          "\xE9"
                                          "A")
                             .Get());
}

TEST(CodePage, NarrowsDoubleByteText) {
  EXPECT_EQ(kKatakana, code_page::Narrow(kJapanese, L"\u30C1\u30E3"));
}

TEST(CodePage, EmptyTextIsEmptyAndNotNull) {
  const Bstr empty = code_page::Widen(kWestern, "");
  ASSERT_NE(nullptr, empty.Get());
  EXPECT_EQ(0U, SysStringLen(empty.Get()));
  EXPECT_EQ("", code_page::Narrow(kWestern, L""));
}

TEST(CodePage, ZeroUnitsPass) {
  EXPECT_EQ(std::string("a\0b", 3), code_page::Narrow(kWestern, WideView(L"a\0b", 3)));
  EXPECT_EQ(3U, SysStringLen(code_page::Widen(kWestern, std::string_view("a\0b", 3)).Get()));
}

TEST(CodePage, CutsDoubleByteTextBetweenCharacters) {
  EXPECT_EQ(0U, code_page::CutLength(kJapanese, kKatakana, 0));
  EXPECT_EQ(0U, code_page::CutLength(kJapanese, kKatakana, 1));
  EXPECT_EQ(2U, code_page::CutLength(kJapanese, kKatakana, 2));
  EXPECT_EQ(2U, code_page::CutLength(kJapanese, kKatakana, 3));
  EXPECT_EQ(4U, code_page::CutLength(kJapanese, kKatakana, 4));
  EXPECT_EQ(4U, code_page::CutLength(kJapanese, kKatakana, 400));
  EXPECT_EQ(1U, code_page::CutLength(kJapanese, "a\x83\x60", 2));
}

TEST(CodePage, CutsSingleByteTextAnywhere) {
  EXPECT_EQ(3U, code_page::CutLength(kWestern, kKatakana, 3));
}

TEST(CodePage, CutsUtf8BetweenCharacters) {
  constexpr std::string_view kText = "a\xC3\xA9\xE3\x83\x81\xF0\x9F\x93\xBA";
  constexpr std::size_t kExpected[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10};
  for (std::size_t limit = 0; limit <= kText.size(); ++limit) {
    EXPECT_EQ(kExpected[limit], code_page::CutLength(CP_UTF8, kText, limit)) << limit;
  }
}

TEST(CodePage, CutsMalformedUtf8AtTheLimit) {
  EXPECT_EQ(3U, code_page::CutLength(CP_UTF8, "\x80\x80\x80\x80\x80", 3));
  EXPECT_EQ(2U, code_page::CutLength(CP_UTF8, "a\x80\x80", 2));
}

}  // namespace

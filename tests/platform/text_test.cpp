// What holds in every code page; the code pages themselves are tested per target.
#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

#include "support/expect.h"

namespace {

using namespace std::string_view_literals;

TEST(Text, EmptyNarrowTextIsAnEmptyBstr) {
  const Bstr text = text::FromNarrow("");
  ASSERT_NE(nullptr, text.Get());
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ("", text::ToNarrow(text.View()));
  ASSERT_NE(nullptr, text::FromUtf8("").Get());
  EXPECT_EQ("", text::ToUtf8({}));
}

TEST(Text, AsciiIsTheSameEverywhere) {
  std::string ascii;
  std::basic_string<OLECHAR> wide;
  for (char byte = 0; byte < 0x7F; ++byte) {
    ascii += byte;
    wide += static_cast<OLECHAR>(byte);
  }
  ExpectText(wide, text::FromNarrow(ascii).Get());
  ExpectText(wide, text::FromUtf8(ascii).Get());
  EXPECT_EQ(ascii, text::ToNarrow(wide));
  EXPECT_EQ(ascii, text::ToUtf8(wide));
}

TEST(Text, ZerosInsideAreKept) {
  EXPECT_EQ(WideView(OLESTR("a\0b\0"), 4), text::FromNarrow("a\0b\0"sv).View());
  EXPECT_EQ("a\0b\0"sv, text::ToNarrow(WideView(OLESTR("a\0b\0"), 4)));
  EXPECT_EQ(WideView(OLESTR("\0\0"), 2), text::FromUtf8("\0\0"sv).View());
  EXPECT_EQ("\0\0"sv, text::ToUtf8(WideView(OLESTR("\0\0"), 2)));
}

std::basic_string<OLECHAR> WideOf(char32_t code) {
  if (code < 0x10000) return {static_cast<OLECHAR>(code)};
  return {static_cast<OLECHAR>(0xD7C0 + (code >> 10)),
          static_cast<OLECHAR>(0xDC00 + (code & 0x3FF))};
}

std::string Utf8Of(char32_t code) {
  const auto byte = [](char32_t bits) { return static_cast<char>(bits); };
  const auto tail = [&](int shift) { return byte(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) return {byte(code)};
  if (code < 0x800) return {byte(0xC0 | code >> 6), tail(0)};
  if (code < 0x10000) return {byte(0xE0 | code >> 12), tail(6), tail(0)};
  return {byte(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
}

TEST(Text, Utf8HoldsEveryCharacter) {
  for (char32_t code = 0; code < 0x110000; ++code) {
    if (code == 0xD800) code = 0xE000;
    const std::basic_string<OLECHAR> wide = WideOf(code);
    const std::string narrow = Utf8Of(code);
    ASSERT_EQ(narrow, text::ToUtf8(wide)) << static_cast<std::uint32_t>(code);
    ASSERT_EQ(wide, text::FromUtf8(narrow).View()) << static_cast<std::uint32_t>(code);
  }
}

TEST(Text, LoneSurrogatesBecomeTheReplacementCharacter) {
  const OLECHAR high = 0xD83D;
  const OLECHAR low = 0xDE00;
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(mark, text::ToUtf8(WideView(&high, 1)));
  EXPECT_EQ(mark, text::ToUtf8(WideView(&low, 1)));
  const OLECHAR swapped[] = {'a', low, high, 'b'};
  EXPECT_EQ("a" + mark + mark + "b", text::ToUtf8(WideView(swapped, 4)));
  const OLECHAR doubled[] = {high, high, low};
  EXPECT_EQ(mark + "\xF0\x9F\x98\x80", text::ToUtf8(WideView(doubled, 3)));
}

TEST(Text, IllFormedUtf8NeverFailsAndKeepsItsSurroundings) {
  for (const std::string_view bad :
       {"\x80"sv, "\xBF\xBF"sv, "\xC0\x80"sv, "\xC1\xBF"sv, "\xC3"sv, "\xE0\x9F\xBF"sv,
        "\xE3\x81"sv, "\xED\xA0\x80"sv, "\xF0\x8F\xBF\xBF"sv, "\xF4\x90\x80\x80"sv,
        "\xF0\x9F\x98"sv, "\xF5\x80\x80\x80"sv, "\xFE"sv, "\xFF\xFF"sv}) {
    const Bstr text = text::FromUtf8("<" + std::string(bad) + ">");
    const WideView view = text.View();
    ASSERT_GE(view.size(), 3U);
    EXPECT_EQ('<', view.front());
    EXPECT_EQ('>', view.back());
    for (const OLECHAR unit : view.substr(1, view.size() - 2)) EXPECT_EQ(0xFFFD, unit);
  }
}

TEST(Text, CutLengthOfAsciiIsTheLimit) {
  EXPECT_EQ(0U, text::CutLength("", 0));
  EXPECT_EQ(0U, text::CutLength("", 5));
  EXPECT_EQ(0U, text::CutLength("abc", 0));
  EXPECT_EQ(2U, text::CutLength("abc", 2));
  EXPECT_EQ(3U, text::CutLength("abc", 3));
  EXPECT_EQ(3U, text::CutLength("abc", 4));
}

TEST(Text, CopyCutLeavesWhatIsBehindTheTerminator) {
  char buffer[8];
  const auto copied = [&buffer](std::string_view narrow, std::size_t size) {
    std::fill(std::begin(buffer), std::end(buffer), '#');
    text::CopyCut(narrow, buffer, size);
    return std::string_view(buffer, sizeof(buffer));
  };
  EXPECT_EQ("########"sv, copied("abc", 0));
  EXPECT_EQ("\0#######"sv, copied("abc", 1));
  EXPECT_EQ("ab\0#####"sv, copied("abc", 3));
  EXPECT_EQ("abc\0####"sv, copied("abc", 4));
  EXPECT_EQ("abc\0####"sv, copied("abc", 8));
  EXPECT_EQ("\0#######"sv, copied("", 8));
}

TEST(Text, EqualComparesWholeAndWithCase) {
  const auto equal = [](const char* a, const char* b) {
    return text::Equal(Wide(a).Get(), Wide(b).Get());
  };
  EXPECT_TRUE(equal("Country", "Country"));
  EXPECT_FALSE(equal("Country", "country"));
  EXPECT_FALSE(equal("Country", "Countr"));
  EXPECT_FALSE(equal("Country", "Country "));
  EXPECT_FALSE(equal("044", "44"));
}

TEST(Text, NullEqualsEmpty) {
  const Bstr empty = Wide("");
  const Bstr some = Wide("a");
  EXPECT_TRUE(text::Equal(nullptr, nullptr));
  EXPECT_TRUE(text::Equal(nullptr, empty.Get()));
  EXPECT_TRUE(text::Equal(empty.Get(), nullptr));
  EXPECT_FALSE(text::Equal(nullptr, some.Get()));
  EXPECT_FALSE(text::Equal(some.Get(), nullptr));
}

TEST(Text, EqualsWordComparesWholeAndWithCase) {
  EXPECT_TRUE(text::EqualsWord("QPSK", "QPSK"));
  EXPECT_TRUE(text::EqualsWord("", ""));
  EXPECT_FALSE(text::EqualsWord("qpsk", "QPSK"));
  EXPECT_FALSE(text::EqualsWord("8PSK", "QPSK"));
  EXPECT_FALSE(text::EqualsWord("QPSK ", "QPSK"));
  EXPECT_FALSE(text::EqualsWord("QPS", "QPSK"));
  EXPECT_FALSE(text::EqualsWord("", "QPSK"));
}

TEST(Text, ToIntReadsTheLeadingNumber) {
  EXPECT_EQ(0, text::ToInt(""));
  EXPECT_EQ(0, text::ToInt("x1"));
  EXPECT_EQ(0, text::ToInt("-"));
  EXPECT_EQ(0, text::ToInt("+-1"));
  EXPECT_EQ(0, text::ToInt("- 1"));
  EXPECT_EQ(0, text::ToInt("0x10"));
  EXPECT_EQ(44, text::ToInt("044"));
  EXPECT_EQ(12, text::ToInt("12abc"));
  EXPECT_EQ(12, text::ToInt("12 34"));
  EXPECT_EQ(12, text::ToInt("12.9"));
  EXPECT_EQ(-7, text::ToInt("-7"));
  EXPECT_EQ(7, text::ToInt("+7"));
  EXPECT_EQ(-5, text::ToInt(" \t\n\v\f\r-5"));
  EXPECT_EQ(0, text::ToInt("\b5"));
  EXPECT_EQ(1, text::ToInt("1\0"
                           "2"sv));
}

TEST(Text, ToIntWrapsBeyond32Bits) {
  EXPECT_EQ(2147483647, text::ToInt("2147483647"));
  EXPECT_EQ(static_cast<std::int32_t>(0x80000000U), text::ToInt("2147483648"));
  EXPECT_EQ(static_cast<std::int32_t>(0x80000000U), text::ToInt("-2147483648"));
  EXPECT_EQ(-1, text::ToInt("4294967295"));
  EXPECT_EQ(0, text::ToInt("4294967296"));
  EXPECT_EQ(5, text::ToInt("4294967301"));
  EXPECT_EQ(-5, text::ToInt("-4294967301"));
}

}  // namespace

// The code page that a process chooses; platform/code_page_test.cpp tells what one does with texts.
//
// Linux only: choosing a page, marks and likenesses, which Windows has its own way with
#include <gtest/gtest.h>
#include <iconv.h>

#include <atomic>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/code_page_codes.h"
#include "platform/text.h"
#include "support/expect.h"
#include "support/linux/code_page_scope.h"

namespace {

using namespace std::string_view_literals;

constexpr UINT kPages[] = {932,  936,  949,  950,  1250, 1251, 1252,
                           1253, 1254, 1255, 1256, 1257, 1258};

/// What iconv makes of one code; empty when it knows none.
std::u16string Iconv(iconv_t handle, std::string code) {
  iconv(handle, nullptr, nullptr, nullptr, nullptr);
  char16_t units[4];
  char* in = code.data();
  std::size_t left = code.size();
  char* out = reinterpret_cast<char*>(units);
  std::size_t room = sizeof(units);
  if (iconv(handle, &in, &left, &out, &room) != 0) return {};
  if (iconv(handle, nullptr, nullptr, &out, &room) != 0) return {};
  return {units, (sizeof(units) - room) / 2};
}

TEST(CodePage, Utf8IsTheDefault) {
  ExpectText(u"\u00E9\U0001F600", text::FromNarrow("\xC3\xA9\xF0\x9F\x98\x80").Get());
  EXPECT_EQ("\xC3\xA9\xF0\x9F\x98\x80", text::ToNarrow(u"\u00E9\U0001F600"));
}

TEST(CodePage, OneThatCannotBeHadChangesNothing) {
  const CodePageScope scope(932);
  for (const UINT page : {0U, 1U, 3U, 437U, 1249U, 1259U, 20932U, 65000U, 0xFFFFFFFFU}) {
    ExpectHr(E_INVALIDARG, ZorTunedexSetCodePage(page));
    EXPECT_EQ("\x82\xA0", text::ToNarrow(u"\u3042")) << page;
  }
  ExpectHr(S_OK, ZorTunedexSetCodePage(65001));
  EXPECT_EQ("\xE3\x81\x82", text::ToNarrow(u"\u3042"));
}

TEST(CodePage, WhatIconvKnowsIsDecodedAsItDoes) {
  for (const UINT page : kPages) {
    const CodePageScope scope(page);
    const iconv_t handle = iconv_open("UTF-16LE", ("CP" + std::to_string(page)).c_str());
    ASSERT_NE(reinterpret_cast<iconv_t>(-1), handle);
    unsigned known = 0;
    for (const std::string& code : Codes(page)) {
      const std::u16string expected = Iconv(handle, code);
      if (expected.size() != 1) continue;
      ++known;
      ASSERT_EQ(expected, text::FromNarrow(code).View()) << "page " << page << " code " << code;
    }
    EXPECT_GE(known, page < 1000 ? 7000U : 220U) << page;
    iconv_close(handle);
  }
}

TEST(CodePage, LikenessesHaveNoCode) {
  {
    // A yen sign would become a backslash.
    const CodePageScope scope(932);
    EXPECT_EQ("??", text::ToNarrow(u"\u00A5\u203E"));
    EXPECT_EQ("\x81\x60\x81\x7C", text::ToNarrow(u"\u301C\u2212"));
  }
  const CodePageScope scope(1252);
  EXPECT_EQ("?", text::ToNarrow(u"\u0142"));
}

TEST(CodePage, LettersThatThePageLacksAreTakenApart) {
  const CodePageScope scope(1258);
  EXPECT_EQ("\xEA\xEC", text::ToNarrow(u"\u1EBF"));
}

TEST(CodePage, MalformedUtf8IsCutWhereItReadsTheSame) {
  for (const std::string& narrow : Texts("a\x80\xA0\xC3\xE3\xED\xF0\xF4\xFF"sv, 5)) {
    for (std::size_t limit = 0; limit <= narrow.size() + 1; ++limit) {
      const std::size_t cut = text::CutLength(narrow, limit);
      ASSERT_LE(cut, limit);
      ASSERT_LE(cut, narrow.size());
      // The next cut above is beyond the limit: none of the lengths between is clean.
      const std::size_t last = std::min(limit, narrow.size());
      for (std::size_t between = cut + 1; between <= last; ++between) {
        std::u16string halves(text::FromNarrow(narrow.substr(0, between)).View());
        halves += text::FromNarrow(narrow.substr(between)).View();
        ASSERT_NE(halves, text::FromNarrow(narrow).View()) << narrow << " limit " << limit;
      }
      if (cut != narrow.size()) ExpectCleanCut(narrow, cut);
    }
  }
}

TEST(CodePage, MalformedUtf8IsReplacedOncePerBrokenCharacter) {
  const auto expectMarks = [](std::size_t marks, std::string_view narrow) {
    EXPECT_EQ(std::u16string(marks, u'\uFFFD'), text::FromNarrow(narrow).View()) << narrow;
  };
  expectMarks(1, "\x80");
  expectMarks(2, "\xC0\xAF");
  expectMarks(1, "\xE3\x81");
  expectMarks(3, "\xED\xA0\x80");
  expectMarks(1, "\xF0\x9F\x98");
  expectMarks(4, "\xF4\x90\x80\x80");
  expectMarks(3, "\xE0\x80\x80");
  expectMarks(2, "\xF0\x9F\xF0\x9F");
}

TEST(CodePage, EqualIsCodeUnitByCodeUnit) {
  const Bstr first(u"a\0b"sv);
  const Bstr second(u"a\0c"sv);
  EXPECT_FALSE(text::Equal(first.Get(), second.Get()));
  EXPECT_TRUE(text::Equal(first.Get(), Bstr::Copy(first.Get()).Get()));
  EXPECT_FALSE(text::Equal(Bstr(u"\u00E9").Get(), Bstr(u"e\u0301").Get()));
}

TEST(CodePage, ChangesWhileOtherThreadsConvert) {
  const CodePageScope scope(65001);
  std::atomic<bool> isDone{false};
  std::atomic<unsigned> count{0};
  std::atomic<unsigned> wrong{0};
  const auto convert = [&] {
    while (!isDone) {
      const std::string narrow = text::ToNarrow(u"\u3042");
      if (narrow != "\xE3\x81\x82" && narrow != "\x82\xA0" && narrow != "\xA4\xA2") ++wrong;
      ++count;
    }
  };
  std::thread first(convert);
  std::thread second(convert);
  while (count < 20000) {
    for (const UINT page : {932U, 936U, 65001U}) ExpectHr(S_OK, ZorTunedexSetCodePage(page));
  }
  isDone = true;
  first.join();
  second.join();
  EXPECT_EQ(0U, wrong);
}

}  // namespace

// Linux only: only there does the process choose its code page
#include <gtest/gtest.h>
#include <iconv.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/text.h"
#include "support/expect.h"
#include "support/linux/code_page_scope.h"

namespace {

using namespace std::string_view_literals;

constexpr UINT kPages[] = {932,  936,  949,  950,  1250, 1251, 1252,
                           1253, 1254, 1255, 1256, 1257, 1258};

bool IsLead(UINT page, unsigned byte) {
  if (page == 932) return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
  return page < 1000 && byte >= 0x81 && byte <= 0xFE;
}

/// Every single byte, and every pair that begins with a lead byte and does not end in zero.
std::vector<std::string> Codes(UINT page) {
  std::vector<std::string> codes;
  for (unsigned first = 0; first < 256; ++first) {
    const char lead = static_cast<char>(first);
    if (!IsLead(page, first)) {
      codes.push_back({lead});
      continue;
    }
    for (unsigned second = 1; second < 256; ++second) {
      codes.push_back({lead, static_cast<char>(second)});
    }
  }
  return codes;
}

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

TEST(CodePage, EveryCharacterSurvives) {
  for (const UINT page : kPages) {
    const CodePageScope scope(page);
    for (const std::string& code : Codes(page)) {
      const Bstr wide = text::FromNarrow(code);
      ASSERT_EQ(1U, wide.View().size()) << "page " << page << " code " << code;
      if (wide.View() == u"\uFFFD") continue;
      const std::string narrow = text::ToNarrow(wide.View());
      // A character may have several codes; all of them read the same.
      ASSERT_EQ(wide.View(), text::FromNarrow(narrow).View())
          << "page " << page << " code " << code;
      // In the single-byte pages it has one.
      if (page > 1000) {
        ASSERT_EQ(code, narrow) << page;
      }
    }
  }
}

/// FNV-1a.
class Digest {
 public:
  void Add(unsigned value) {
    for (int shift = 0; shift < 32; shift += 8)
      m_hash = (m_hash ^ (value >> shift & 0xFF)) * kPrime;
  }
  std::uint64_t Get() const { return m_hash; }

 private:
  static constexpr std::uint64_t kPrime = 0x100000001B3U;
  std::uint64_t m_hash = 0xCBF29CE484222325U;
};

struct TableDigest {
  UINT page;
  std::uint64_t decoding;
  std::uint64_t encoding;  ///< of the units that some code stands for
};

// Taken through MultiByteToWideChar and WideCharToMultiByte on the Windows target.
constexpr TableDigest kDigests[] = {
    {932, 0xB11E91CD2E667CCDU, 0xF289FC07DAD06FEAU},
    {936, 0xACD08552892DD140U, 0x947B58D5C0F07F07U},
    {949, 0x368B4E78EB1FF2F9U, 0x72B9BEB07802C801U},
    {950, 0x84BDD803E62DF7AAU, 0x233827569455922FU},
    {1250, 0x51AD0AFF011D7584U, 0xA9F70C1FD3F3C274U},
    {1251, 0x8D62E75F3013084FU, 0x90571146B1F386CFU},
    {1252, 0x0FD1B6F865FE35CCU, 0xEE4A6EB63F39E4A8U},
    {1253, 0x6A4BB640F537F731U, 0xB56E63E3136A803DU},
    {1254, 0x11998E7ED3BC743AU, 0x1BBB1C43D7CB7162U},
    {1255, 0x8D9BF884A9ED7B48U, 0x11ED0E4D3D5AAC98U},
    {1256, 0x680F3891A03998B8U, 0xAC29E86E9EE0CE24U},
    {1257, 0x33497D88072E8588U, 0x88B6A407B468FB1CU},
    {1258, 0x268A35F996819952U, 0xF8BBD78A92FD5A9AU},
};

std::uint64_t DecodingDigest(UINT page) {
  Digest digest;
  for (const std::string& code : Codes(page)) {
    for (const char byte : code) digest.Add(static_cast<unsigned char>(byte));
    digest.Add(text::FromNarrow(code).View()[0]);
  }
  return digest.Get();
}

std::uint64_t EncodingDigest() {
  Digest digest;
  for (char16_t unit = 1; unit < 0xFFFD; ++unit) {
    const WideView wide(&unit, 1);
    const std::string code = text::ToNarrow(wide);
    if (text::FromNarrow(code).View() != wide) continue;
    digest.Add(unit);
    for (const char byte : code) digest.Add(static_cast<unsigned char>(byte));
  }
  return digest.Get();
}

TEST(CodePage, TablesAreThoseOfWindows) {
  for (const TableDigest& expected : kDigests) {
    const CodePageScope scope(expected.page);
    EXPECT_EQ(expected.decoding, DecodingDigest(expected.page)) << expected.page;
    EXPECT_EQ(expected.encoding, EncodingDigest()) << expected.page;
  }
}

TEST(CodePage, BackslashAndTildeAreThemselvesInJapanese) {
  const CodePageScope scope(932);
  ExpectText(u"\\~", text::FromNarrow("\x5C\x7E").Get());
  EXPECT_EQ("\x5C\x7E", text::ToNarrow(u"\\~"));
  ExpectText(u"\u30BD\u8868\\", text::FromNarrow("\x83\x5C\x95\x5C\x5C").Get());
  EXPECT_EQ("\x83\x5C\x95\x5C\x5C", text::ToNarrow(u"\u30BD\u8868\\"));
  // A yen sign would become a backslash: it has no code here.
  EXPECT_EQ("??", text::ToNarrow(u"\u00A5\u203E"));
}

TEST(CodePage, JapaneseHasWhatWindowsAddedToIt) {
  const CodePageScope scope(932);
  const auto expectPair = [](std::string_view narrow, WideView wide) {
    ExpectText(wide, text::FromNarrow(narrow).Get());
    EXPECT_EQ(narrow, text::ToNarrow(wide));
  };
  expectPair("\xB1\xDF", u"\uFF71\uFF9F");          // half-width
  expectPair("\x87\x40\x87\x8A", u"\u2460\u3231");  // NEC row 13
  expectPair("\xFB\xFC\xFA\x40", u"\u9AD9\u2170");  // IBM's
  expectPair("\xF0\x40\xF9\xFC", u"\uE000\uE757");  // user-defined
  expectPair("\x80\xA0\xFD\xFF", u"\u0080\uF8F0\uF8F1\uF8F3");
  expectPair("\x81\x60\x81\x7C", u"\uFF5E\uFF0D");  // not the wave dash, nor the minus
  EXPECT_EQ("\x81\x60\x81\x7C", text::ToNarrow(u"\u301C\u2212"));
  // NEC's selection of IBM's characters reads the same and is written in IBM's place.
  ExpectText(u"\u7E8A", text::FromNarrow("\xED\x40").Get());
  EXPECT_EQ("\xFA\x5C", text::ToNarrow(u"\u7E8A"));
}

TEST(CodePage, BytesWithoutACharacterBecomeTheReplacementCharacter) {
  const CodePageScope scope(932);
  ExpectText(u"\uFFFD", text::FromNarrow("\x81").Get());
  ExpectText(u"a\uFFFD", text::FromNarrow("a\xE0").Get());
  ExpectText(u"\uFFFDb", text::FromNarrow("\x81\x20"
                                          "b")
                             .Get());
  ExpectText(u"\uFFFD\uFFFD", text::FromNarrow("\xFC\xFC\x85\x40").Get());
  // The zero behind a lead byte is no part of a character.
  ExpectText(u"\uFFFD\0a"sv, text::FromNarrow("\x81\0a"sv).Get());
}

TEST(CodePage, CharactersWithoutACodeBecomeQuestionMarks) {
  const CodePageScope scope(1252);
  EXPECT_EQ("a?b", text::ToNarrow(u"a\u3042b"));
  EXPECT_EQ("?", text::ToNarrow(u"\uFFFD"));
  // One for each unit, as on Windows.
  EXPECT_EQ("??", text::ToNarrow(u"\U0001F600"));
  EXPECT_EQ("\x80\xE9\0?"sv, text::ToNarrow(u"\u20AC\u00E9\0\u0142"sv));
}

TEST(CodePage, AccentsStayBesideTheirLetters) {
  {
    const CodePageScope scope(1258);
    // Not composed on reading, though iconv would.
    ExpectText(u"a\u0300", text::FromNarrow("a\xCC").Get());
    EXPECT_EQ("a\xCC", text::ToNarrow(u"a\u0300"));
    // Composed letters that the page lacks come out taken apart.
    EXPECT_EQ("\xEA\xEC", text::ToNarrow(u"\u1EBF"));
  }
  const CodePageScope scope(1255);
  ExpectText(u"\u05E9\u05C1", text::FromNarrow("\xF9\xD1").Get());
}

/// Ends of characters, found by walking over them.
std::vector<std::size_t> Ends(std::string_view narrow) {
  std::vector<std::size_t> ends = {0};
  for (std::size_t next = 0; next < narrow.size(); ends.push_back(next)) {
    const bool isLead = IsLead(932, static_cast<unsigned char>(narrow[next]));
    next += isLead && next + 1 < narrow.size() && narrow[next + 1] != 0 ? 2U : 1U;
  }
  return ends;
}

/// All texts over an alphabet up to a length.
std::vector<std::string> Texts(std::string_view alphabet, std::size_t longest) {
  std::vector<std::string> texts = {""};
  std::size_t begin = 0;
  for (std::size_t length = 1; length <= longest; ++length) {
    const std::size_t end = texts.size();
    for (; begin < end; ++begin) {
      for (const char byte : alphabet) texts.push_back(texts[begin] + byte);
    }
  }
  return texts;
}

/// Nothing is lost or changed at the place of the cut.
void ExpectCleanCut(const std::string& narrow, std::size_t cut) {
  std::u16string halves(text::FromNarrow(narrow.substr(0, cut)).View());
  halves += text::FromNarrow(narrow.substr(cut)).View();
  EXPECT_EQ(halves, text::FromNarrow(narrow).View()) << narrow << " cut at " << cut;
}

TEST(CodePage, JapaneseIsCutBetweenCharacters) {
  const CodePageScope scope(932);
  for (const std::string& narrow : Texts("\0a\x5C\x83\xB1\xFC"sv, 6)) {
    const std::vector<std::size_t> ends = Ends(narrow);
    for (std::size_t limit = 0; limit <= narrow.size() + 1; ++limit) {
      std::size_t expected = 0;
      for (const std::size_t end : ends) {
        if (end <= limit) expected = end;
      }
      const std::size_t cut = text::CutLength(narrow, limit);
      ASSERT_EQ(expected, cut) << narrow << " limit " << limit;
      if (limit == 3) ExpectCleanCut(narrow, cut);
    }
  }
}

TEST(CodePage, Utf8IsCutBetweenCharacters) {
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

TEST(CodePage, SingleBytesAreCutAnywhere) {
  const CodePageScope scope(1252);
  EXPECT_EQ(2U, text::CutLength("\xE3\x81\x82", 2));
  EXPECT_EQ(3U, text::CutLength("\xE3\x81\x82", 3));
}

TEST(CodePage, CopyCutNeverLeavesHalfACharacter) {
  const CodePageScope scope(932);
  char buffer[6];
  text::CopyCut("\x82\xA0\x82\xA2\x82\xA4", buffer, sizeof(buffer));
  EXPECT_STREQ("\x82\xA0\x82\xA2", buffer);
  text::CopyCut("\x82\xA0", buffer, 2);
  EXPECT_STREQ("", buffer);
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

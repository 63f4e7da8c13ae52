// The tables of the code pages: what every code reads as, and back.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/code_page_codes.h"
#include "platform/stated_page.h"
#include "support/expect.h"

namespace {

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
    digest.Add(stated_page::Widen(page, code).View()[0]);
  }
  return digest.Get();
}

std::uint64_t EncodingDigest(UINT page) {
  Digest digest;
  for (OLECHAR unit = 1; unit < 0xFFFD; ++unit) {
    const WideView wide(&unit, 1);
    const std::string code = stated_page::Narrow(page, wide);
    if (stated_page::Widen(page, code).View() != wide) continue;
    digest.Add(unit);
    for (const char byte : code) digest.Add(static_cast<unsigned char>(byte));
  }
  return digest.Get();
}

TEST(CodePageTables, AreThoseOfWindows) {
  for (const TableDigest& expected : kDigests) {
    EXPECT_EQ(expected.decoding, DecodingDigest(expected.page)) << expected.page;
    EXPECT_EQ(expected.encoding, EncodingDigest(expected.page)) << expected.page;
  }
}

TEST(CodePageTables, EveryCharacterSurvives) {
  for (const auto& [page, decoding, encoding] : kDigests) {
    for (const std::string& code : Codes(page)) {
      const Bstr wide = stated_page::Widen(page, code);
      ASSERT_EQ(1U, wide.View().size()) << "page " << page << " code " << code;
      if (wide.View() == OLESTR("\uFFFD")) continue;
      const std::string narrow = stated_page::Narrow(page, wide.View());
      // A character may have several codes; all of them read the same.
      ASSERT_EQ(wide.View(), stated_page::Widen(page, narrow).View())
          << "page " << page << " code " << code;
      // In the single-byte pages it has one.
      if (page > 1000) {
        ASSERT_EQ(code, narrow) << page;
      }
    }
  }
}

TEST(CodePageTables, AccentsStayBesideTheirLetters) {
  // Not composed on reading, though iconv would.
  ExpectText(OLESTR("a\u0300"), stated_page::Widen(1258, "a\xCC").Get());
  EXPECT_EQ("a\xCC", stated_page::Narrow(1258, OLESTR("a\u0300")));
  ExpectText(OLESTR("\u05E9\u05C1"), stated_page::Widen(1255, "\xF9\xD1").Get());
}

}  // namespace

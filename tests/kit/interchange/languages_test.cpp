#include "kit/interchange/languages.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

using interchange::Language;
using interchange::LanguageBits;
using interchange::LanguageOf;

TEST(Languages, KeepTheLowFourBitsOfEachLetter) {
  EXPECT_EQ(0x554U, LanguageBits("deu"));  // as stream entries of the samples have it
  EXPECT_EQ(1364U, LanguageBits("DEU"));
  EXPECT_EQ(2021U, LanguageBits("eng"));
  EXPECT_EQ(0U, LanguageBits(""));
  EXPECT_EQ(0U, LanguageBits("de"));
  EXPECT_EQ(0U, LanguageBits("d1u"));
  EXPECT_EQ(0U, LanguageBits("deut"));
}

TEST(Languages, AreThoseThatTheBitsAloneTell) {
  for (const char* code : {"deu", "eng", "fra", "spa", "ita", "jpn", "rus", "ger", "fre", "por"}) {
    const std::optional<Language> language = LanguageOf(LanguageBits(code));
    ASSERT_TRUE(language) << code;
    EXPECT_EQ(code, language->code);
    EXPECT_FALSE(language->assumed) << code;
  }
}

TEST(Languages, AreAssumedWhereSeveralShareTheBits) {
  for (const char* code : {"bul", "cat", "ces", "chi", "dut", "heb", "lat", "mac", "may", "mis",
                           "nor", "srp", "tur", "vie"}) {
    const std::optional<Language> language = LanguageOf(LanguageBits(code));
    ASSERT_TRUE(language) << code;
    EXPECT_EQ(code, language->code);
    EXPECT_TRUE(language->assumed) << code;
  }
  EXPECT_EQ("ben", LanguageOf(LanguageBits("run"))->code);  // the first by the alphabet
}

TEST(Languages, CountAsTheStandardDoes) {
  int alone = 0;
  int shared = 0;
  for (std::uint32_t bits = 0; bits < 4096; ++bits) {
    const std::optional<Language> language = LanguageOf(bits);
    if (!language) continue;
    EXPECT_EQ(bits, LanguageBits(language->code));
    ++(language->assumed ? shared : alone);
  }
  EXPECT_EQ(411, alone);
  EXPECT_EQ(44, shared);
  EXPECT_FALSE(LanguageOf(0));
  EXPECT_FALSE(LanguageOf(4096));
  EXPECT_FALSE(LanguageOf(UINT32_MAX));
}

}  // namespace

}  // namespace zortunedex::kit

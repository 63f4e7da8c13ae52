// What holds of any bytes at all.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "kit/xml/hostile_text.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit {

namespace {

using markup::Document;

std::string Sample(const char* name) {
  std::ifstream file(std::string(ZORTUNEDEX_SAMPLES "/home/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A part of a sample that has everything and is quickly read.
std::string ShortSample() { return Sample("UserSettings.xml"); }

std::string Together(const std::vector<markup::Token>& tokens, std::string_view bytes) {
  std::string text;
  for (const markup::Token& token : tokens) text += token.span.In(bytes);
  return text;
}

/// The tree without its places.
std::string Outline(const Document& document) {
  std::ostringstream out;
  for (const markup::Element& element : document.Elements()) {
    out << static_cast<std::int32_t>(element.parent) << ' ' << document.NameOf(element);
    for (const markup::Attribute& attribute : document.AttributesOf(element)) {
      out << ' ' << document.NameOf(attribute) << "={" << document.ValueOf(attribute) << '}';
    }
    out << '\n';
  }
  return out.str();
}

std::string Described(const Document& document) {
  std::ostringstream out;
  for (const markup::Damage& damage : document.Damages()) {
    out << CodeOf(damage.reason) << ' ' << TextOf(damage.reason) << " at " << damage.span.begin
        << (damage.isMended ? "\n" : " left\n");
  }
  return out.str();
}

bool IsAllMended(const Document& document) {
  for (const markup::Damage& damage : document.Damages()) {
    if (!damage.isMended && damage.reason != markup::Reason::RawBlank) return false;
  }
  return document.EncodingName().empty();
}

/// Nothing is told of it but raw blanks.
bool IsSound(const Document& document) {
  return document.IsReadable() &&
         std::ranges::all_of(document.Damages(), [](const markup::Damage& damage) {
           return damage.reason == markup::Reason::RawBlank;
         });
}

/// Answers whether everything was mended.
bool ExpectLossless(const std::string& bytes) {
  SCOPED_TRACE(testing::PrintToString(bytes));
  std::vector<markup::Token> tokens;
  markup::ReadOptions options;
  options.tokens = &tokens;
  options.decode = [](std::string_view word) {
    std::string text;
    for (const char byte : word) text += static_cast<unsigned char>(byte) < 0x80 ? byte : 'e';
    return text;
  };
  const Document document = Document::Read(bytes, options);
  EXPECT_EQ(bytes, Together(tokens, bytes));
  EXPECT_EQ(bytes, Together(markup::Tokens(bytes), bytes));
  std::size_t count = 0;
  std::size_t place = 0;
  for (const markup::Damage& damage : document.Damages()) {
    count += document.MendsOf(damage).size();
    EXPECT_LE(place, damage.span.begin);
    place = damage.span.begin;
  }
  EXPECT_EQ(count, document.Mends().Count());
  // What a parser takes stands as it is read.
  EXPECT_TRUE(count == 0 || !document.IsReadable());
  const std::optional<std::string> mended = document.Mends().Apply(bytes);
  if (!mended) {
    ADD_FAILURE() << "a mend is outside of the file";
    return false;
  }
  if (!IsAllMended(document)) return false;
  const Document again = Document::Read(*mended);
  EXPECT_TRUE(IsSound(again)) << testing::PrintToString(*mended) << '\n'
                              << Described(document) << Described(again);
  EXPECT_EQ(Outline(again), Outline(document)) << testing::PrintToString(*mended) << '\n'
                                               << Described(document);
  return true;
}

TEST(ReaderProperties, TokensAreTheFileAndMendsMendIt) {
  Random random(20250301);
  int mended = 0;
  for (int i = 0; i < 60000 && !testing::Test::HasFailure(); ++i) {
    mended += ExpectLossless(HostileText(random, 24));
  }
  EXPECT_GT(mended, 20000);
}

TEST(ReaderProperties, HoldForBytesThatAreNoXml) {
  Random random(7);
  for (int i = 0; i < 5000 && !testing::Test::HasFailure(); ++i) {
    std::string bytes(random(60), '\0');
    for (char& byte : bytes) byte = static_cast<char>(random(256));
    ExpectLossless(bytes);
  }
}

TEST(ReaderProperties, HoldForDamagedSamples) {
  Random random(99);
  const std::string sample = ShortSample();
  int mended = 0;
  for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i) {
    mended += ExpectLossless(Mutated(sample, random, 6));
  }
  EXPECT_GT(mended, 1000);
}

TEST(ReaderProperties, HoldForRawMarkup) {
  Random random(41);
  int mended = 0;
  for (int i = 0; i < 8000 && !testing::Test::HasFailure(); ++i) {
    const std::string text = HostilePreFormattedText(random);
    mended += ExpectLossless(i % 2 == 0 ? text : Mutated(text, random, 4));
  }
  EXPECT_GT(mended, 2000);
}

TEST(ReaderProperties, SamplesHaveNoDamage) {
  for (const char* name :
       {"ChanInfo.xml", "PreSetChannelInfo.xml", "SatelliteInfo.xml", "UserSettings.xml"}) {
    const Document document = Document::Read(Sample(name));
    EXPECT_TRUE(document.Damages().empty()) << name << '\n' << Described(document);
    EXPECT_GT(document.Elements().size(), 8U) << name;
  }
}

}  // namespace

}  // namespace zortunedex::kit

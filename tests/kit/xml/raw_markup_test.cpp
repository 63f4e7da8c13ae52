#include "kit/xml/raw/raw_markup.h"

#include <gtest/gtest.h>

#include "kit/xml/raw/raw_tables.h"

namespace zortunedex::kit {

namespace {

using markup::RawAttribute;
using markup::RawSplit;
using markup::SplitRaw;

constexpr RawAttribute kRadio[] = {{"name"}, {"nameDisplay"}, {"index", true}, {"note"}};

std::vector<std::string> Values(std::string_view text) {
  const RawSplit split = SplitRaw(text, "Channel", kRadio);
  std::vector<std::string> values(1, std::to_string(split.solutions));
  for (const markup::Span value : split.values) values.emplace_back(value.In(text));
  return values;
}

using Strings = std::vector<std::string>;

TEST(RawMarkup, SplitsAtTheNextName) {
  EXPECT_EQ((Strings{"1", "a", "b", "5", ""}),
            Values("<Channel name=\"a\" nameDisplay=\"b\" index=\"5\" note=\"\"/>"));
  EXPECT_EQ(
      (Strings{"1", "7\" TV", "<\"/>", "-5", "&\" x=\"1"}),
      Values("<Channel name=\"7\" TV\" nameDisplay=\"<\"/>\" index=\"-5\" note=\"&\" x=\"1\">"));
  EXPECT_EQ((Strings{"1", "a\" index=\"7", "b", "5", ""}),
            Values("<Channel name=\"a\" index=\"7\" nameDisplay=\"b\" index=\"5\" note=\"\"/>"));
}

TEST(RawMarkup, TellsTheLastValueOfANumberByItsDigits) {
  EXPECT_EQ((Strings{"1", "a", "b\" index=\"x", "5", ""}),
            Values("<Channel name=\"a\" nameDisplay=\"b\" index=\"x\" index=\"5\" note=\"\"/>"));
  EXPECT_EQ((Strings{"0"}),
            Values("<Channel name=\"a\" nameDisplay=\"b\" index=\"12345678901\" note=\"\"/>"));
  EXPECT_EQ((Strings{"0"}), Values("<Channel name=\"a\" nameDisplay=\"b\" index=\"\" note=\"\"/>"));
  EXPECT_EQ((Strings{"0"}),
            Values("<Channel name=\"a\" nameDisplay=\"b\" index=\"-\" note=\"\"/>"));
}

TEST(RawMarkup, EndsAtTwoSolutions) {
  const std::string name = "a\" nameDisplay=\"a";
  std::string text = "<Channel name=\"" + name + "\" nameDisplay=\"" + name;
  for (int i = 0; i < 500; ++i) text += "\" nameDisplay=\"";
  EXPECT_EQ("2", Values(text + "\" index=\"5\" note=\"\"/>")[0]);
}

TEST(RawMarkup, AsksForEveryAttributeInItsOrder) {
  for (const char* text : {"", "<", "<Channel", "<Channel/>", "<Channel name=\"a\"/>",
                           "<Channel nameDisplay=\"b\" name=\"a\" index=\"5\" note=\"\"/>",
                           "<Channel name=\"a\" nameDisplay=\"b\" index=\"5\"/>",
                           "<Channel name=\"a\"  nameDisplay=\"b\" index=\"5\" note=\"\"/>",
                           "<Channel name='a' nameDisplay='b' index='5' note=''/>",
                           "<Channels name=\"a\" nameDisplay=\"b\" index=\"5\" note=\"\"/>",
                           "<Channel name=\"a\" nameDisplay=\"b\" index=\"5\" note=\"/>",
                           "<Channel name=\"a\" nameDisplay=\"b\" index=\"5\" note=\"\" />",
                           "<Channel name=\"a\" nameDisplay=\"b\" index=\"/>"}) {
    EXPECT_EQ((Strings{"0"}), Values(text)) << text;
  }
  EXPECT_EQ(0, SplitRaw("<Channel/>", "Channel", {}).solutions);
}

TEST(RawMarkup, KnowsTheLibrarysTables) {
  const auto names = [](std::string_view element, InputSignalType signal) {
    std::string text;
    for (const RawAttribute& row : markup::RawTableOf(element, signal)) {
      text.append(row.name).append(row.isNumber ? "# " : " ");
    }
    return text;
  };
  EXPECT_EQ("name nameDisplay index# freq# favor# lock# ", names("Channel", InputSignalFMRadio));
  EXPECT_EQ("name countrycode# ", names("Country", InputSignalUnknown));
  EXPECT_EQ("type inputSignalType# ", names("ChannelSet", InputSignalUnknown));
  EXPECT_EQ("ID# name type# ", names("Components", InputSignalTDMBMobile));
  EXPECT_EQ("", names("Components", InputSignalDVBSatellite));
  EXPECT_EQ("type# pid# lang# ", names("AudioStream", InputSignalDVBTerrestrial));
  EXPECT_EQ("", names("Channel", InputSignalDVBCable));
  EXPECT_EQ("", names("SatelliteParams", InputSignalDVBTerrestrial));
  EXPECT_TRUE(names("SatelliteParams", InputSignalDVBSatellite).starts_with("polarisation west"));
}

}  // namespace

}  // namespace zortunedex::kit

// What the library does not know is told once, by whichever rules go through it.
#include <gtest/gtest.h>

#include "kit/check/checker.h"

namespace zortunedex::kit {

namespace {

/// Paths and attributes of what is unknown in a channel of a set.
std::string UnknownIn(const std::string& signal, const std::string& channel) {
  check::Files files;
  files[std::string(check::kChannels)] =
      "<CHANNELTABLE><Country countrycode='49'><ChannelSet inputSignalType='" + signal + "'>" +
      channel + "</ChannelSet></Country></CHANNELTABLE>";
  check::Checker checker({});
  std::string told;
  const std::string above = "Country[49]/ChannelSet[" + signal + "]/Channel";
  for (const check::Finding& finding : checker.Check(files).findings) {
    if (finding.code->name != "ZT031" && finding.code->name != "ZT032") continue;
    EXPECT_TRUE(finding.path.starts_with(above)) << finding.path;
    told += finding.path.substr(above.size()) + " " + finding.attribute.value_or("-") + "\n";
  }
  return told;
}

TEST(CheckUnknownParts, AreToldOnceInEveryPart) {
  EXPECT_EQ(
      "[index=1] a\n[index=1]/ElementStreams b\n[index=1]/ElementStreams/VideoStream c\n"
      "[index=1]/ElementStreams/Foo -\n[index=1]/SatelliteParams d\n",
      UnknownIn("64",
                "<Channel index='1' a=''><ElementStreams b=''><VideoStream c=''/><Foo e=''/>"
                "</ElementStreams><SatelliteParams d=''/></Channel>"));
  EXPECT_EQ("[index=1]/ElementStreams/Components[ID=0] q\n",
            UnknownIn("160",
                      "<Channel index='1'><ElementStreams><Components ID='0' q=''/>"
                      "</ElementStreams></Channel>"));
}

TEST(CheckUnknownParts, AreNotLookedIntoThemselves) {
  EXPECT_EQ("[index=1]/ElementStreams -\n[index=1]/SatelliteParams -\n",
            UnknownIn("5",
                      "<Channel index='1'><ElementStreams a=''><VideoStream b=''/>"
                      "</ElementStreams><SatelliteParams c=''/></Channel>"));
  EXPECT_EQ(
      "[index=1]/ElementStreams[2] -\n",
      UnknownIn("64", "<Channel index='1'><ElementStreams/><ElementStreams a=''/></Channel>"));
}

// A type whose channels have no form leaves empty elements behind.
TEST(CheckUnknownParts, AreThoseOfChannelsWithoutAForm) {
  EXPECT_EQ("/ElementStreams -\n",
            UnknownIn("48", "<Channel a=''><ElementStreams b=''/></Channel>"));
}

}  // namespace

}  // namespace zortunedex::kit

#include "kit/check/prediction/comparison.h"

#include "kit/check/checker.h"
#include "kit/home.h"

namespace {

std::string FileOf(const std::string& frequency) {
  return "<CHANNELTABLE><Country name=\"Germany\" countrycode=\"49\">"
         "<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">"
         "<Channel name=\"One\" nameDisplay=\"One\" index=\"1\" freq=\"" +
         frequency + "\" favor=\"0\" lock=\"0\"/></ChannelSet></Country></CHANNELTABLE>";
}

// The library gets other bytes than were looked at, as if it read something else in them.
TEST(CheckComparison, TellsWhatTheLibraryReadsOtherwise) {
  check::Checker checker({});
  const markup::Document document = checker.Read(FileOf("89000"));
  const auto compare = [&](const std::string& bytes) {
    return check::CompareChannels(document, bytes, checker.Library(), checker.Text());
  };
  EXPECT_TRUE(compare(FileOf("89000")).empty());
  const std::vector<check::Finding> findings = compare(FileOf("90000"));
  ASSERT_EQ(1U, findings.size());
  EXPECT_EQ("ZT900", findings[0].code->name);
  EXPECT_EQ("Country[49]/ChannelSet[5]", findings[0].path);
  EXPECT_EQ("channel 1 of the library's list: frequency", findings[0].text);
  EXPECT_EQ(1U, compare("<CHANNELTABLE/>").size());
}

// Of a large file all lists but the first are read out of a part of it.
TEST(CheckComparison, ReadsTheListsOfALargeFile) {
  std::string bytes = "\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- a >b< -->\n<CHANNELTABLE a='1'>";
  bytes += "<!--" + std::string(5'000'000, 'x') + "-->";
  for (const std::string country : {"49", "44", "33"}) {
    bytes += "<Country name='A' countrycode='" + country + "'>";
    for (const std::string signal : {"5", "64"}) {
      bytes += "<ChannelSet inputSignalType='" + signal + "'>";
      for (const std::string index : {"2", "1", "7"}) {
        bytes += "<Channel index='" + index + "' name='N" + country + signal + "\xC3\xA9' freq='" +
                 index + "'/>";
      }
      bytes += "</ChannelSet>";
    }
    bytes += "<ChannelSet inputSignalType='80'/></Country>";
  }
  bytes += "</CHANNELTABLE>";
  check::Checker checker({});
  const markup::Document document = checker.Read(bytes);
  ASSERT_TRUE(document.IsReadable());
  EXPECT_TRUE(check::CompareChannels(document, document.Bytes(), checker.Library(), checker.Text())
                  .empty());
}

}  // namespace

#include "kit/check/prediction/comparison.h"

#include <gtest/gtest.h>

#include "kit/check/repair.h"
#include "kit/failure.h"
#include "kit/xml/hostile_text.h"
#include "support/random.h"

namespace zortunedex::kit {

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

check::Files ChannelFileOf(std::string bytes) {
  check::Files files;
  files[std::string(check::kChannels)] = std::move(bytes);
  return files;
}

/// What is told of the differences; nothing where there is none.
std::string Differences(check::Checker& checker, const check::Files& files) {
  std::string text;
  for (const check::Finding& finding : checker.Compare(checker.Check(files).documents)) {
    text += finding.text + '\n';
  }
  return text;
}

/// What a repair makes of it is read as predicted, too, and stays.
void ExpectRepairedForGood(check::Checker& checker, const check::Files& files) {
  check::RepairSettings settings;
  settings.options = {check::Option::DropUnrepairable};
  check::Repaired once;
  try {
    once = check::Repair(files, settings);
  } catch (const Failure& refused) {
    EXPECT_EQ(std::string::npos, std::string(refused.what()).find("the library would read"));
    return;
  }
  EXPECT_EQ("", Differences(checker, once.after));
  EXPECT_TRUE(check::Repair(once.after, settings).after == once.after);
}

// The second of two components with one place replaces what it has, and leaves the name alone where
// it has none.
TEST(CheckComparison, ReadsComponentsWithOnePlace) {
  check::Checker checker({});
  for (const char* second : {"type=\"2\"", "name=\"\" type=\"2\"", "name=\"b\"",
                             "nqme=\"again\" type=\"1\"", "name=\"longer name\""}) {
    const check::Files files = ChannelFileOf(
        "<CHANNELTABLE><Country countrycode=\"82\"><ChannelSet inputSignalType=\"160\">"
        "<Channel index=\"1\"><ElementStreams numOfComponents=\"2\">"
        "<Components ID=\"0\" name=\"first\" type=\"1\"/><Components ID=\"0\" " +
        std::string(second) +
        "/></ElementStreams></Channel></ChannelSet></Country></CHANNELTABLE>");
    EXPECT_EQ("", Differences(checker, files)) << second;
  }
}

// A text that stands behind an element is no part of a value, and a value that reads as markup is
// markup for the library.
TEST(CheckComparison, TakesGoodMarkupForNothingElse) {
  check::Checker checker({});
  const std::string head =
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>\r\n"
      "\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
      "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n";
  const std::string values =
      "\" nameDisplay=\"B\" index=\"1\" freq=\"89000\" favor=\"0\" lock=\"0\"/>";
  const std::string tail = "\r\n\t\t</ChannelSet>\r\n\t</Country>\r\n</CHANNELTABLE>\r\n";
  for (const char* name : {"A", "A\"/>B", "A\" x=\"B", "A\"/>B\" nameDisplay=\"C"}) {
    for (const char* behind : {"", "x", "\"/>"}) {
      const std::string channel = std::string("\t\t\t<Channel name=\"") + name + values + behind;
      const check::Files files = ChannelFileOf(head + channel + tail);
      EXPECT_EQ("", Differences(checker, files)) << name << behind;
      ExpectRepairedForGood(checker, files);
    }
  }
}

TEST(CheckComparison, HoldsForRawMarkup) {
  check::Checker checker({});
  Random random(43);
  int read = 0;
  for (int i = 0; i < 150 && !testing::Test::HasFailure(); ++i) {
    const std::string text = HostilePreFormattedText(random);
    const check::Files files = ChannelFileOf(i % 2 == 0 ? text : Mutated(text, random, 3));
    SCOPED_TRACE(testing::PrintToString(*files.begin()->second));
    read += checker.Check(files).documents.begin()->second.IsReadable();
    EXPECT_EQ("", Differences(checker, files));
    ExpectRepairedForGood(checker, files);
  }
  EXPECT_GT(read, 10);
}

}  // namespace

}  // namespace zortunedex::kit

// Storing and deleting customer lists: the whole file before and after each changing call.
#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "xml/files/preset_file.h"

namespace {

const std::string kSet = "<ChannelSet inputSignalType='176'>";

/// A country with these channels in its one-segment set, and others that must not be taken.
dom::Element CountryOf(const std::string& channels) {
  return SourceOf("<Country countrycode='81'><ChannelSet inputSignalType='64'>" +
                  ChannelXml(50, "T25l", 50) + "</ChannelSet>" + kSet + channels +
                  "</ChannelSet></Country>");
}

/// A file with one area and its three lists, which are the customer's.
std::string ThreeLists() {
  return PresetXml("<Area AreaIndex='0' name='Mine'><SubArea SubAreaIndex='0' name='a'>" +
                   ChannelXml(1, "T25l", 27) + "</SubArea><SubArea SubAreaIndex='1' name='b'>" +
                   ChannelXml(2, "T25l", 26) + "</SubArea><SubArea SubAreaIndex='2' name='c'>" +
                   ChannelXml(3, "T25l", 25) + "</SubArea></Area>");
}

std::string GoldenTree(const char* name) { return Formatted(TextDocument(PresetData(name)).root); }

}  // namespace

TEST(CustomerList, ANewOneIsAppended) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK,
           file.SaveCustomerChannelList(
               CountryOf(ChannelXml(1, "VHdv", 26) + ChannelXml(2, "T25l", 27)), 2, "summer"));
  EXPECT_EQ(GoldenTree("stored_new.xml"), file.SavedTree());
  EXPECT_EQ(1U, file.Files().Count());
  EXPECT_EQ(3, file.SubAreaCount(2));
  EXPECT_EQ("summer", file.SubAreaName(2, 2));
  EXPECT_EQ("1:26 2:27", ChannelsOf(file.List(2, 2)));
}

TEST(CustomerList, AnOldOneIsRenamedAndItsChannelsReplacedByTheirIndex) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(
                     CountryOf(ChannelXml(2, "VHdv", 22) + ChannelXml(3, "T25l", 21) +
                               ChannelXml(9, "VHdv", 24)),
                     0, "cottage"));
  EXPECT_EQ(GoldenTree("stored_over.xml"), file.SavedTree());
  EXPECT_EQ(2, file.SubAreaCount(2));
  EXPECT_EQ("cottage", file.SubAreaName(2, 0));
  EXPECT_EQ("1:27 2:22 3:21 9:24", ChannelsOf(file.List(2, 0)));
}

// Twice under the same number, from channels that overlap.
TEST(CustomerList, StoredTwice) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(
                     CountryOf(ChannelXml(1, "T25l", 11) + ChannelXml(5, "T25l", 15)), 2, "x"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(
                     CountryOf(ChannelXml(5, "T25l", 25) + ChannelXml(3, "T25l", 23)), 2, "y"));
  EXPECT_EQ(3, file.SubAreaCount(2));
  EXPECT_EQ("y", file.SubAreaName(2, 2));
  EXPECT_EQ("1:11 3:23 5:25", ChannelsOf(file.List(2, 2)));
  const std::string once = file.SavedTree();
  ExpectHr(S_OK, file.SaveCustomerChannelList(CountryOf(ChannelXml(5, "T25l", 25)), 2, "y"));
  EXPECT_EQ(once, file.SavedTree()) << "children of a channel do not pile up either";
}

// New lists are numbered by how many there are, whatever number was asked for.
TEST(CustomerList, ANumberBeyondTheNextOneFails) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(E_FAIL, file.SaveCustomerChannelList(CountryOf(ChannelXml(1, "T25l", 27)), 5, "far"));
  EXPECT_EQ(3, file.SubAreaCount(2)) << "the new one stays in memory";
  EXPECT_EQ("far", file.SubAreaName(2, 2));
  EXPECT_EQ("", ChannelsOf(file.List(2, 2)));
  EXPECT_EQ(PresetData("presets.xml"), file.Saved());
  // The next attempt finds it when it asks for the number that it got.
  ExpectHr(S_OK, file.SaveCustomerChannelList(CountryOf(ChannelXml(1, "T25l", 27)), 2, "near"));
  EXPECT_EQ(3, file.SubAreaCount(2));
  EXPECT_EQ("near", file.SubAreaName(2, 2));
  EXPECT_EQ("1:27", ChannelsOf(file.List(2, 2)));
  ExpectHr(E_FAIL, file.SaveCustomerChannelList(CountryOf(""), -1, "negative"));
  EXPECT_EQ(4, file.SubAreaCount(2));
}

TEST(CustomerList, GapsAndDoublesInTheNumbers) {
  PresetFile file(
      PresetXml("<Area AreaIndex='0'><SubArea SubAreaIndex='1' name='one'/><SubArea "
                "SubAreaIndex='1' name='two'/><SubArea SubAreaIndex='4'/></Area>"));
  const dom::Element source = CountryOf(ChannelXml(1, "T25l", 27));
  ExpectHr(S_OK, file.SaveCustomerChannelList(source, 1, "first of its number"));
  EXPECT_EQ("first of its number", file.SubAreaName(0, 1));
  ExpectHr(E_FAIL, file.SaveCustomerChannelList(source, 0, "a gap is not filled"));
  EXPECT_EQ(4, file.SubAreaCount(0));
  ExpectHr(S_OK, file.SaveCustomerChannelList(source, 3, "got the next number"));
  EXPECT_EQ(4, file.SubAreaCount(0));
  // Deleting numbers all of them.
  ExpectHr(S_OK, file->DeleteCustomerChannelList(1));
  EXPECT_EQ(3, file.SubAreaCount(0));
  EXPECT_EQ("two", file.SubAreaName(0, 0));
  EXPECT_EQ("got the next number", file.SubAreaName(0, 2));
}

TEST(CustomerList, TheAreaIsTheOneWithTheHighestNumberThatIsExpected) {
  // Out of order: the second element is the third area.
  PresetFile file(PresetXml("<Area AreaIndex='1'/><Area AreaIndex='2'/><Area AreaIndex='0'/>"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(CountryOf(""), 0, "empty"));
  EXPECT_EQ(1, file.SubAreaCount(2));
  // Three areas, none of which is number two.
  PresetFile gap(PresetXml("<Area AreaIndex='0'/><Area AreaIndex='1'/><Area AreaIndex='3'/>"));
  const std::string tree = gap.Tree();
  ExpectHr(E_FAIL, gap.SaveCustomerChannelList(CountryOf(""), 0, "nowhere"));
  ExpectHr(S_FALSE, gap->DeleteCustomerChannelList(0));
  EXPECT_EQ(tree, gap.Tree());
}

TEST(CustomerList, TheSourceIsACountryOrAChannelSet) {
  PresetFile file(ThreeLists());
  const std::string channels = ChannelXml(7, "T25l", 27);
  ExpectHr(S_OK,
           file.SaveCustomerChannelList(SourceOf(kSet + channels + "</ChannelSet>"), 3, "set"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(CountryOf(channels), 4, "country"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(SourceOf("<X>" + ChannelXml(8, "T25l", 28) + kSet +
                                                       channels + "</ChannelSet></X>"),
                                              5, "own channels first"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(SourceOf("<Country/>"), 6, "none"));
  EXPECT_EQ("7:27", ChannelsOf(file.List(0, 3)));
  EXPECT_EQ("7:27", ChannelsOf(file.List(0, 4)));
  EXPECT_EQ("8:28", ChannelsOf(file.List(0, 5)));
  EXPECT_EQ("", ChannelsOf(file.List(0, 6)));
  EXPECT_EQ("none", file.SubAreaName(0, 6));
}

TEST(CustomerList, ChannelsThatCannotBeCopiedAreLeftOut) {
  PresetFile file(ThreeLists());
  // No index is one index more; a channel without one gets 0.
  ExpectHr(S_OK, file.SaveCustomerChannelList(
                     CountryOf(ChannelXml(-1, "T25l", 1) + "<Channel physicalChannel='2'/>" +
                               ChannelXml(6, "T25l", 3) + ChannelXml(6, "T25l", 4)),
                     1, "b"));
  EXPECT_EQ("0:2 2:26 6:4", ChannelsOf(file.List(0, 1)));
}

TEST(CustomerList, TheSelectionReachesTheFileWithIt) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK, file->SetArea(0, 1));
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  EXPECT_EQ(GoldenTree("selected_and_deleted.xml"), file.SavedTree());
}

TEST(CustomerListDeletion, NumbersTheRest) {
  PresetFile file(ThreeLists());
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  EXPECT_EQ(2, file.SubAreaCount(0));
  file.Load(file.Saved());
  EXPECT_EQ("b", file.SubAreaName(0, 0));
  EXPECT_EQ("c", file.SubAreaName(0, 1));
  EXPECT_EQ("2:26", ChannelsOf(file.List(0, 0)));
  ExpectHr(S_OK, file->DeleteCustomerChannelList(1));
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  EXPECT_EQ(0, file.SubAreaCount(0));
  EXPECT_EQ("Mine", file.AreaName(0));
}

TEST(CustomerListDeletion, OfAnUnknownOneChangesNothing) {
  PresetFile file(PresetData("presets.xml"));
  const std::string tree = file.Tree();
  for (const LONG unknown : {-1, 2, 65536}) {
    ExpectHr(S_FALSE, file->DeleteCustomerChannelList(unknown));
  }
  EXPECT_EQ(tree, file.Tree());
  EXPECT_EQ(PresetData("presets.xml"), file.Saved());
}

TEST(CustomerListDeletion, LeavesAListThatWasLoadedFromItAlone) {
  PresetFile file(ThreeLists());
  const ComPtr<IChannelInfoMgr> list = file.List(0, 1);
  ExpectHr(S_OK, file->DeleteCustomerChannelList(1));
  EXPECT_EQ("2:26", ChannelsOf(list));
  // The list still follows its element, which is no part of the file any more.
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
  channel->SetChannelIndex(3);  // answers E_NOTIMPL and stores it
  ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
  ExpectHr(S_OK, list->MoveChannel(3, 1));
  ExpectHr(S_OK, list->Clear());
  EXPECT_EQ("", ChannelsOf(list));
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  EXPECT_EQ("c", file.SubAreaName(0, 0));
  EXPECT_EQ("3:25", ChannelsOf(file.List(0, 0)));
  ExpectHr(S_OK, list->Close());
}

// A list that was handed out is bound to its sub-area in memory.
TEST(CustomerListDeletion, WritesWhatAPresetListLost) {
  PresetFile file(PresetData("presets.xml"));
  const ComPtr<IChannelInfoMgr> list = file.List(0, 0);
  ExpectHr(S_OK, list->Clear());
  EXPECT_EQ("", ChannelsOf(file.List(0, 0)));
  EXPECT_EQ(PresetData("presets.xml"), file.Saved());
  ExpectHr(S_OK, file->DeleteCustomerChannelList(1));
  file.Load(file.Saved());
  EXPECT_EQ("", ChannelsOf(file.List(0, 0)));
}

TEST(CustomerListSaving, ThatFailsLeavesTheFile) {
  PresetFile file(ThreeLists());
  const std::filesystem::path path = file.Files().File(PresetFile::kName);
  // What stands in the file's place now cannot be replaced.
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  ExpectHr(S_OK, file.SaveCustomerChannelList(CountryOf(""), 0, "not told"));
  EXPECT_TRUE(FAILED(file->DeleteCustomerChannelList(0)));
  EXPECT_TRUE(std::filesystem::is_directory(path));
  EXPECT_TRUE(std::filesystem::is_empty(path));
  EXPECT_EQ(1U, file.Files().Count());
  EXPECT_EQ("b", file.SubAreaName(0, 0)) << "in memory it is done";
}

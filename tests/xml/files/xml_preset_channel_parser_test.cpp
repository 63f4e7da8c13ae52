// Reading the preset file: counts, names, the selection, preset lists.
#include "xml/files/xml_preset_channel_parser.h"

#include <gtest/gtest.h>

#include <utility>

#include "channels/channel_loading.h"
#include "xml/files/preset_file.h"

namespace {

constexpr InputSignalType kOneSeg = InputSignalISDBTerrestrialOneSeg;

/// What a file answers that has no presets: nothing but the remembered selection.
void ExpectNoPresets(CXmlPreSetChannelParser& parser, const std::string& what) {
  SCOPED_TRACE(what);
  LONG count = 7;
  ExpectHr(E_FAIL, parser.GetAreaCount(&count));
  EXPECT_EQ(0, count);
  count = 7;
  ExpectHr(E_FAIL, parser.GetSubAreaCount(0, &count));
  EXPECT_EQ(0, count);
  CHAR name[260] = "untouched";
  ExpectHr(E_FAIL, parser.GetAreaNameByIndex(0, name));
  ExpectHr(E_FAIL, parser.GetSubAreaNameByIndex(0, 0, name));
  EXPECT_STREQ("untouched", name);
  dom::Element element;
  ExpectHr(E_FAIL, parser.GetSelectedSubArea(&element));
  EXPECT_FALSE(element);
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(E_FAIL, PresetList().Make(parser, 0, 0, list.Receive()));
  EXPECT_FALSE(list);
  ExpectHr(E_FAIL, parser.SaveCustomerChannelList(SourceOf("<Country/>"), 0, "name", LoadChannel));
  ExpectHr(E_FAIL, parser.DeleteCustomerChannelList(0));
}

void ExpectArea(LONG lArea, LONG lSubArea, PresetFile& file,
                std::source_location where = std::source_location::current()) {
  LONG actualArea = -1;
  LONG actualSubArea = -1;
  ExpectHr(S_OK, file->GetArea(&actualArea, &actualSubArea), where);
  EXPECT_EQ(std::pair(lArea, lSubArea), std::pair(actualArea, actualSubArea)) << where.line();
}

}  // namespace

TEST(PresetFileLoad, TellsWhatTheDocumentTells) {
  const TempDir dir;
  CXmlPreSetChannelParser parser;
  ExpectHr(E_FAIL, parser.Load());
  ExpectHr(S_OK, parser.Open(dir.File("PreSetChannelInfo.xml")));
  parser.SetDirty(true);
  ExpectHr(S_FALSE, parser.Load());
  EXPECT_TRUE(parser.IsDirty());
  EXPECT_EQ(0U, dir.Count());
  for (const char* broken : {"", "text", "<CHANNELTABLE>", "<a/><b/>"}) {
    dir.Write("PreSetChannelInfo.xml", broken);
    ExpectHr(S_FALSE, parser.Load());
    ExpectNoPresets(parser, broken);
    EXPECT_EQ(broken, dir.Read("PreSetChannelInfo.xml"));
    EXPECT_EQ(1U, dir.Count());
  }
  dir.Write("PreSetChannelInfo.xml", PresetXml(""));
  EXPECT_TRUE(parser.IsDirty());
  ExpectHr(S_OK, parser.Load());
  EXPECT_FALSE(parser.IsDirty());
}

TEST(PresetFileParser, WithoutADocument) {
  CXmlPreSetChannelParser parser;
  ExpectNoPresets(parser, "never opened");
  dom::Element set;
  ExpectHr(E_FAIL, parser.GetPresetChannelSet(&set));
  ExpectHr(E_FAIL, parser.SetArea(70000, 1));
  LONG area = 0;
  LONG subArea = 0;
  // The selection is remembered all the same.
  ExpectHr(S_OK, parser.GetArea(&area, &subArea));
  EXPECT_EQ(4464, area);
  EXPECT_EQ(1, subArea);
  const TempDir dir;
  ExpectHr(S_OK, parser.Open(dir.File("none")));
  ExpectNoPresets(parser, "opened and not loaded");
}

TEST(PresetFileParser, NullPointers) {
  PresetFile file(PresetData("presets.xml"));
  LONG number = 7;
  ExpectHr(E_POINTER, file->GetPresetChannelSet(nullptr));
  ExpectHr(E_POINTER, file->GetSelectedSubArea(nullptr));
  ExpectHr(E_POINTER, file.GetPresetChannelMgr(0, 0, nullptr));
  ExpectHr(E_INVALIDARG, file->GetAreaCount(nullptr));
  ExpectHr(E_INVALIDARG, file->GetSubAreaCount(0, nullptr));
  ExpectHr(E_INVALIDARG, file->GetAreaNameByIndex(0, nullptr));
  ExpectHr(E_INVALIDARG, file->GetSubAreaNameByIndex(0, 0, nullptr));
  ExpectHr(E_INVALIDARG, file->GetArea(&number, nullptr));
  ExpectHr(E_INVALIDARG, file->GetArea(nullptr, &number));
  ExpectHr(E_INVALIDARG, file.SaveCustomerChannelList(dom::Element(), 0, "name"));
  ExpectHr(E_INVALIDARG, file.SaveCustomerChannelList(SourceOf("<Country/>"), 0, nullptr));
  EXPECT_EQ(7, number);
  EXPECT_EQ(PresetData("presets.xml"), file.Saved());
}

TEST(PresetFileParser, FilesWithoutTheSet) {
  for (const char* xml : {
           "<CHANNELTABLE/>",
           "<CHANNELTABLE><Country countrycode='81'/></CHANNELTABLE>",
           "<CHANNELTABLE><Country countrycode='82'><ChannelSet inputSignalType='176'><Area "
           "AreaIndex='0'/></ChannelSet></Country></CHANNELTABLE>",
           "<CHANNELTABLE><Country countrycode='81'><ChannelSet inputSignalType='64'><Area "
           "AreaIndex='0'/></ChannelSet></Country></CHANNELTABLE>",
           "<CHANNELTABLE><Country countrycode='081'><ChannelSet inputSignalType='176'/>"
           "</Country></CHANNELTABLE>",
           "<Country countrycode='81'><ChannelSet inputSignalType='176'/></Country>",
       }) {
    PresetFile file(xml);
    dom::Element set;
    ExpectHr(S_OK, file->GetPresetChannelSet(&set));
    EXPECT_FALSE(set);
    ExpectArea(0, 0, file);
    ExpectHr(E_POINTER, file->SetArea(3, 70000));
    ExpectArea(3, 4464, file);
    ExpectNoPresets(*file.operator->(), xml);
    EXPECT_EQ(xml, file.Saved());
    EXPECT_EQ(1U, file.Files().Count());
  }
}

TEST(PresetFileParser, TheRootMayHaveAnyName) {
  PresetFile file(
      "<Other><Country countrycode='44'/><Country countrycode='81'><ChannelSet/>"
      "<ChannelSet inputSignalType='176'><Area AreaIndex='0' name='A'/></ChannelSet></Country>"
      "</Other>");
  EXPECT_EQ(1, file.AreaCount());
  EXPECT_EQ("A", file.AreaName(0));
}

TEST(PresetFileParser, CountsAndNames) {
  PresetFile file(PresetData("presets.xml"));
  EXPECT_EQ(3, file.AreaCount());
  EXPECT_EQ("North", file.AreaName(0));
  EXPECT_EQ("South", file.AreaName(1));
  EXPECT_EQ("Mine", file.AreaName(2));
  EXPECT_EQ(2, file.SubAreaCount(0));
  EXPECT_EQ(1, file.SubAreaCount(1));
  EXPECT_EQ(2, file.SubAreaCount(2));
  EXPECT_EQ("Hills", file.SubAreaName(0, 1));
  EXPECT_EQ("Plain", file.SubAreaName(1, 0));
  EXPECT_EQ("car", file.SubAreaName(2, 1));
}

TEST(PresetFileParser, UnknownNumbers) {
  PresetFile file(PresetData("presets.xml"));
  CHAR name[260] = "untouched";
  for (const LONG unknown : {-1, 3, 65536, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(0, file.SubAreaCount(unknown));
    ExpectHr(E_POINTER, file->GetAreaNameByIndex(unknown, name));
    ExpectHr(E_POINTER, file->GetSubAreaNameByIndex(unknown, 0, name));
    ExpectHr(E_POINTER, file->GetSubAreaNameByIndex(0, unknown, name));
  }
  EXPECT_STREQ("untouched", name);
}

TEST(PresetFileParser, WithoutAreas) {
  PresetFile file(PresetXml(""));
  EXPECT_EQ(0, file.AreaCount());
  EXPECT_EQ(0, file.SubAreaCount(0));
  ExpectHr(E_FAIL, file.SaveCustomerChannelList(SourceOf("<Country/>"), 0, "name"));
  ExpectHr(S_FALSE, file->DeleteCustomerChannelList(0));
  EXPECT_EQ("", ChannelsOf(file.List(0, 0)));
  EXPECT_EQ(PresetXml(""), file.Saved());
}

// Numbers count, places do not; the text of the number is compared.
TEST(PresetFileParser, AreasOutOfOrderWithGapsAndDoubles) {
  PresetFile file(
      PresetXml("<Area AreaIndex='7' name='seven'><SubArea SubAreaIndex='5' name='five'/></Area>"
                "<Area AreaIndex='0' name='first'><SubArea SubAreaIndex='0' name='a'/></Area>"
                "<Area AreaIndex='0' name='second'><SubArea SubAreaIndex='0' name='b'/>"
                "<SubArea SubAreaIndex='1' name='c'/></Area>"
                "<Area AreaIndex='02' name='two'/><Area name='none'/>"));
  EXPECT_EQ(5, file.AreaCount());
  EXPECT_EQ("seven", file.AreaName(7));
  EXPECT_EQ("five", file.SubAreaName(7, 5));
  EXPECT_EQ("first", file.AreaName(0));
  EXPECT_EQ(3, file.SubAreaCount(0)) << "those of both";
  EXPECT_EQ("a", file.SubAreaName(0, 0));
  EXPECT_EQ("c", file.SubAreaName(0, 1));
  CHAR name[260] = "untouched";
  ExpectHr(E_POINTER, file->GetAreaNameByIndex(1, name));
  ExpectHr(E_POINTER, file->GetAreaNameByIndex(2, name));
  EXPECT_STREQ("untouched", name);
}

TEST(PresetFileParser, NamesThatAreMissingEmptyOrLong) {
  const std::string longName(300, 'n');
  PresetFile file(
      PresetXml("<Area AreaIndex='0'><SubArea SubAreaIndex='0' name=''/></Area>"
                "<Area AreaIndex='1' name='" +
                longName + "'><SubArea SubAreaIndex='0' name='" + longName + "x'/></Area>"));
  CHAR name[260] = "untouched";
  ExpectHr(S_FALSE, file->GetAreaNameByIndex(0, name));
  EXPECT_STREQ("untouched", name);
  EXPECT_EQ("", file.SubAreaName(0, 0));
  // The byte behind the buffer belongs to somebody else.
  CHAR guarded[262];
  for (CHAR& letter : guarded) letter = '#';
  ExpectHr(S_OK, file->GetAreaNameByIndex(1, guarded));
  EXPECT_EQ(longName.substr(0, 259), guarded);
  ExpectHr(S_OK, file->GetSubAreaNameByIndex(1, 0, guarded));
  EXPECT_EQ(longName.substr(0, 259), guarded);
  EXPECT_EQ('#', guarded[260]);
  EXPECT_EQ('#', guarded[261]);
}

TEST(PresetFileArea, IsReadFromTheFileAndWrittenToMemory) {
  PresetFile file(PresetData("presets.xml"));
  ExpectArea(1, 0, file);
  ExpectHr(S_OK, file->SetArea(0, 1));
  ExpectArea(0, 1, file);
  EXPECT_NE(std::string::npos, file.Tree().find(" Area=\"0\" SubArea=\"1\">"));
  EXPECT_EQ(PresetData("presets.xml"), file.Saved());
  ExpectHr(S_OK, file->Load());
  ExpectArea(1, 0, file);
}

TEST(PresetFileArea, KeepsTheLowSixteenBits) {
  PresetFile file(PresetXml("<Area AreaIndex='70000' name='far'><SubArea SubAreaIndex='1'>" +
                            ChannelXml(1, "T25l", 27) + "</SubArea></Area>"));
  ExpectHr(S_OK, file->SetArea(70000, 1));
  dom::Element selected;
  ExpectHr(S_OK, file->GetSelectedSubArea(&selected));
  EXPECT_TRUE(selected) << "everything else works with the whole numbers";
  EXPECT_NE(std::string::npos, file.Tree().find(" Area=\"70000\" SubArea=\"1\">"));
  EXPECT_EQ("far", file.AreaName(70000));
  ExpectArea(4464, 1, file);
  // Asking cut what is remembered, not what the document says.
  ExpectHr(S_OK, file->GetSelectedSubArea(&selected));
  EXPECT_FALSE(selected);
  EXPECT_NE(std::string::npos, file.Tree().find(" Area=\"70000\" SubArea=\"1\">"));
  ExpectHr(S_OK, file->SetArea(-1, INT32_MIN));
  ExpectArea(65535, 0, file);
  ExpectHr(S_OK, file->SetArea(65535, 65536));
  ExpectArea(65535, 0, file);
}

TEST(PresetFileArea, MissingAttributesReadAsZero) {
  PresetFile file(PresetXml(""));
  ExpectHr(S_OK, file->SetArea(5, 6));
  ExpectHr(S_OK, file->Load());
  ExpectArea(0, 0, file);
}

TEST(PresetFileArea, SelectedSubArea) {
  PresetFile file(PresetData("presets.xml"));
  dom::Element subArea;
  // What is remembered counts, and nothing was remembered yet.
  ExpectHr(S_OK, file->GetSelectedSubArea(&subArea));
  EXPECT_EQ("Harbour", Attribute(subArea, "name"));
  ExpectHr(S_OK, file->SetArea(2, 1));
  ExpectHr(S_OK, file->GetSelectedSubArea(&subArea));
  EXPECT_EQ("car", Attribute(subArea, "name"));
  ExpectHr(S_OK, file->Load());
  ExpectHr(S_OK, file->GetSelectedSubArea(&subArea));
  EXPECT_EQ("car", Attribute(subArea, "name")) << "over a load too";
  ExpectHr(S_OK, file->SetArea(2, 9));
  ExpectHr(S_OK, file->GetSelectedSubArea(&subArea));
  EXPECT_FALSE(subArea);
}

TEST(PresetFileList, HoldsTheChannelsOfASubArea) {
  PresetFile file(PresetData("presets.xml"));
  const ComPtr<IChannelInfoMgr> list = file.List(0, 0);
  ASSERT_TRUE(list);
  EXPECT_EQ("1:27 2:26", ChannelsOf(list));
  InputSignalType signalType = InputSignalUnknown;
  ExpectHr(S_OK, list->GetSignalType(&signalType));
  EXPECT_EQ(kOneSeg, signalType);
  BOOL dirty = 1;
  ExpectHr(S_OK, list->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(2, channel.Receive()));
  Bstr name;
  ExpectHr(S_OK, channel->GetChannelName(name.Receive()));
  ExpectText(OLESTR("Two"), name.Get());
  EXPECT_EQ("4:25", ChannelsOf(file.List(1, 0)));
  EXPECT_EQ(PresetData("presets.xml"), file.Saved());
}

TEST(PresetFileList, OfAnUnknownSubAreaIsEmpty) {
  PresetFile file(PresetData("presets.xml"));
  for (const auto& [lArea, lSubArea] : {std::pair(0, 2), std::pair(3, 0), std::pair(-1, -1)}) {
    const ComPtr<IChannelInfoMgr> list = file.List(lArea, lSubArea);
    ASSERT_TRUE(list);
    EXPECT_EQ("", ChannelsOf(list));
    InputSignalType signalType = InputSignalUnknown;
    ExpectHr(S_OK, list->GetSignalType(&signalType));
    EXPECT_EQ(kOneSeg, signalType);
  }
}

TEST(PresetFileList, IsHeldUntilTheNextOne) {
  PresetFile file(PresetData("presets.xml"));
  const ComPtr<IChannelInfoMgr> first = file.List(0, 0);
  ExpectRefCount(2, first.Get());
  ExpectHr(E_POINTER, file.GetPresetChannelMgr(0, 0, nullptr));
  ExpectRefCount(2, first.Get());
  const ComPtr<IChannelInfoMgr> second = file.List(1, 0);
  ExpectRefCount(1, first.Get());
  ExpectRefCount(2, second.Get());
  ExpectHr(S_OK, file->Close());
  ExpectRefCount(2, second.Get());
  EXPECT_EQ("4:25", ChannelsOf(second));
  // It goes also when there is no next one.
  ComPtr<IChannelInfoMgr> none;
  ExpectHr(E_FAIL, file.GetPresetChannelMgr(0, 0, none.Receive()));
  ExpectRefCount(1, second.Get());
  EXPECT_EQ("1:27 2:26", ChannelsOf(first));
}

TEST(PresetFileList, OutlivesItsParser) {
  ComPtr<IChannelInfoMgr> list;
  {
    PresetFile file(PresetData("presets.xml"));
    list = file.List(0, 0);
  }
  ExpectRefCount(1, list.Get());
  EXPECT_EQ("1:27 2:26", ChannelsOf(list));
  ExpectHr(S_OK, list->Clear());
  EXPECT_EQ("", ChannelsOf(list));
}

// The presets and customer lists of one-segment reception. The traps for hosts stand at the end,
// with the order of calls that avoids them.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "contract/database.h"
#include "contract/slots/slots.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr InputSignalType kOneSegment = InputSignalISDBTerrestrialOneSeg;
constexpr DWORD kJapan = 81;
constexpr char kPresetFile[] = "PreSetChannelInfo.xml";

/// Three areas: North (0) with Harbour (channels 1 and 2) and Hills (none), South (1) with Plain
/// (channel 4), Mine (2) with the customer's lists home (channels 1 and 3) and car (channel 2). The
/// selection is 1, 0.
std::string PresetBytes() {
  std::ifstream file(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/presets.xml", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class Presets : public testing::Test {
 protected:
  Presets() { m_directory.Write(kPresetFile, PresetBytes()); }

  ComPtr<IZorTunedex> Open(InputSignalType signalType = kOneSegment, DWORD country = kJapan) const {
    return OpenDatabase(m_directory.Path(), signalType, country);
  }
  /// What another host that opens the directory finds in ChanInfo.xml.
  std::string ChannelsInFile(DWORD country = kJapan) const;
  std::string PresetsInFile(LONG lArea, LONG lSubArea) const;
  /// Makes ChanInfo.xml with so many made channels.
  void WriteChannels(UINT count) const {
    const ComPtr<IZorTunedex> database = Open();
    AddMade(ListOf(database, kOneSegment), kOneSegment, count);
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  void ExpectPresetFileUntouched() const {
    EXPECT_EQ(PresetBytes(), m_directory.Read(kPresetFile));
  }

  TempDir m_directory;
};

/// "index:number" of every channel below index 100, in the order of the indexes.
std::string Describe(const ComPtr<IChannelInfoMgr>& list) {
  std::string text;
  UINT found = 0;
  for (UINT index = 0; index < 100; ++index) {
    ComPtr<IChannelInfo> channel;
    if (FAILED(list->GetChannelInfoByIndex(index, channel.Receive()))) continue;
    UINT number = 0;
    ExpectHr(S_OK, channel->GetChannelNo(&number));
    text += (found++ ? " " : "") + std::to_string(index) + ":" + std::to_string(number);
  }
  EXPECT_EQ(CountOf(list), found);
  return text;
}

std::string Describe(const ComPtr<IZorTunedex>& database, LONG lArea, LONG lSubArea) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetPresetChannelMgr(lArea, lSubArea, list.Receive()));
  return list ? Describe(list) : "(none)";
}

std::string Presets::ChannelsInFile(DWORD country) const {
  return Describe(ListOf(Open(kOneSegment, country), kOneSegment));
}

std::string Presets::PresetsInFile(LONG lArea, LONG lSubArea) const {
  return Describe(Open(), lArea, lSubArea);
}

std::string SubAreaName(const ComPtr<IZorTunedex>& database, LONG lArea, LONG lSubArea) {
  CHAR name[260] = "(none)";
  database->GetSubAreaNameByIndex(lArea, lSubArea, name);
  return name;
}

LONG SubAreaCount(const ComPtr<IZorTunedex>& database, LONG lArea) {
  LONG count = -1;
  ExpectHr(S_OK, database->GetSubAreaCount(lArea, &count));
  return count;
}

void ExpectArea(LONG lArea, LONG lSubArea, const ComPtr<IZorTunedex>& database,
                std::source_location where = std::source_location::current()) {
  LONG actualArea = -1;
  LONG actualSubArea = -1;
  ExpectHr(S_OK, database->GetArea(&actualArea, &actualSubArea), where);
  EXPECT_EQ(std::pair(lArea, lSubArea), std::pair(actualArea, actualSubArea)) << where.line();
}

/// What every method answers that reads presets where there are none.
void ExpectNone(const ComPtr<IZorTunedex>& database,
                std::source_location where = std::source_location::current()) {
  LONG count = 7;
  ExpectHr(E_FAIL, database->GetAreaCount(&count), where);
  EXPECT_EQ(0, count) << where.line();
  count = 7;
  ExpectHr(E_FAIL, database->GetSubAreaCount(0, &count), where);
  EXPECT_EQ(0, count) << where.line();
  CHAR name[260] = "untouched";
  ExpectHr(E_FAIL, database->GetAreaNameByIndex(0, name), where);
  ExpectHr(E_FAIL, database->GetSubAreaNameByIndex(0, 0, name), where);
  EXPECT_STREQ("untouched", name) << where.line();
  auto* list = reinterpret_cast<IChannelInfoMgr*>(database.Get());
  ExpectHr(E_FAIL, database->GetPresetChannelMgr(0, 0, &list), where);
  EXPECT_EQ(nullptr, list) << where.line();
  ExpectHr(E_FAIL, database->DeleteCustomerChannelList(0), where);
}

}  // namespace

TEST_F(Presets, BeforeOpen) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ExpectHr(E_FAIL, database->LoadPresetOneSegChannelInfo());
  ExpectNone(database);
  ExpectArea(0, 0, database);
  ExpectHr(E_FAIL, database->SetArea(70000, 65537));
  ExpectArea(4464, 1, database);
  ExpectHr(E_FAIL, database->SaveCustomerChannelList(0, "name"));
}

TEST_F(Presets, OfAnotherSignalType) {
  WriteChannels(3);
  const std::string channels = m_directory.Read(kChannelFile);
  const ComPtr<IZorTunedex> database = Open(InputSignalDVBTerrestrial);
  ExpectHr(E_FAIL, database->LoadPresetOneSegChannelInfo());
  ExpectNone(database);
  // The numbers are remembered, of each the low half.
  ExpectHr(E_FAIL, database->SetArea(70000, 1));
  ExpectArea(4464, 1, database);
  // A store answers the count all the same.
  ExpectHr(S_OK, database->SaveCustomerChannelList(2, "name"));
  EXPECT_EQ(channels, m_directory.Read(kChannelFile));
  ExpectPresetFileUntouched();
  EXPECT_EQ(2U, m_directory.Count());
}

TEST_F(Presets, WithoutAFile) {
  WriteChannels(2);
  std::filesystem::remove(m_directory.File(kPresetFile));
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_FALSE, database->LoadPresetOneSegChannelInfo());
  ExpectNone(database);
  ExpectHr(S_OK, database->SaveCustomerChannelList(0, "name"));
  ExpectMade(ListOf(database, kOneSegment), kOneSegment, 2);
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_F(Presets, WithAFileThatCannotBeUsed) {
  for (const char* bytes : {"", "text", "<CHANNELTABLE>", "<CHANNELTABLE/>",
                            "<CHANNELTABLE><Country countrycode='49'><ChannelSet "
                            "inputSignalType='176'><Area AreaIndex='0'/></ChannelSet></Country>"
                            "</CHANNELTABLE>"}) {
    SCOPED_TRACE(bytes);
    m_directory.Write(kPresetFile, bytes);
    const ComPtr<IZorTunedex> database = Open(kOneSegment, kGermany);
    const bool readable = std::string(bytes).ends_with("/>") || std::string(bytes).size() > 40;
    ExpectHr(readable ? S_OK : S_FALSE, database->LoadPresetOneSegChannelInfo());
    ExpectNone(database);
    ExpectHr(S_OK, database->SaveCustomerChannelList(0, "name"));
    ExpectArea(0, 0, database);
    EXPECT_EQ(bytes, m_directory.Read(kPresetFile));
    EXPECT_EQ(1U, m_directory.Count());
  }
}

// The presets of the time before are still there.
TEST_F(Presets, NothingIsStoredAfterOpeningForAnotherType) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->Open(PathText(m_directory.Path()).Get(), kJapan, InputSignalFMRadio));
  ExpectHr(S_OK, database->SaveCustomerChannelList(0, "name"));
  ExpectPresetFileUntouched();
}

TEST_F(Presets, AreListed) {
  const ComPtr<IZorTunedex> database = Open();
  LONG count = 0;
  ExpectHr(S_OK, database->GetAreaCount(&count));
  EXPECT_EQ(3, count);
  CHAR name[260] = {};
  ExpectHr(S_OK, database->GetAreaNameByIndex(1, name));
  EXPECT_STREQ("South", name);
  EXPECT_EQ(2, SubAreaCount(database, 0));
  EXPECT_EQ(0, SubAreaCount(database, 3));
  ExpectHr(S_OK, database->GetSubAreaNameByIndex(2, 1, name));
  EXPECT_STREQ("car", name);
  ExpectHr(E_POINTER, database->GetAreaNameByIndex(3, name));
  ExpectHr(E_POINTER, database->GetSubAreaNameByIndex(1, 1, name));
  EXPECT_STREQ("car", name);
  ExpectHr(E_INVALIDARG, database->GetAreaCount(nullptr));
  ExpectHr(E_INVALIDARG, database->GetAreaNameByIndex(0, nullptr));
  ExpectHr(E_INVALIDARG, database->GetSubAreaCount(0, nullptr));
  ExpectHr(E_INVALIDARG, database->GetSubAreaNameByIndex(0, 0, nullptr));
  ExpectHr(E_INVALIDARG, database->GetArea(&count, nullptr));
  ExpectHr(E_INVALIDARG, database->GetArea(nullptr, &count));
  ExpectArea(1, 0, database);
}

// As a host in C calls them, by their place in the table behind the three of IUnknown.
TEST_F(Presets, BySlot) {
  const ComPtr<IZorTunedex> database = Open();
  IZorTunedex* object = database.Get();
  LONG count = 0;
  LONG subArea = 0;
  CHAR name[260] = {};
  IChannelInfoMgr* list = nullptr;
  ExpectHr(S_OK, CallSlot(object, 17));
  ExpectHr(S_OK, CallSlot(object, 18, &count));
  EXPECT_EQ(3, count);
  ExpectHr(S_OK, CallSlot(object, 19, LONG{0}, static_cast<CHAR*>(name)));
  EXPECT_STREQ("North", name);
  ExpectHr(S_OK, CallSlot(object, 20, LONG{0}, &count));
  EXPECT_EQ(2, count);
  ExpectHr(S_OK, CallSlot(object, 21, LONG{0}, LONG{1}, static_cast<CHAR*>(name)));
  EXPECT_STREQ("Hills", name);
  ExpectHr(S_OK, CallSlot(object, 22, LONG{0}, LONG{0}));
  EXPECT_EQ("1:27 2:26", Describe(ListOf(database, kOneSegment)));
  ExpectHr(S_OK, CallSlot(object, 23, &count, &subArea));
  EXPECT_EQ(1, count);
  EXPECT_EQ(0, subArea);
  const CHAR* const title = "new";
  ExpectHr(S_OK, CallSlot(object, 24, LONG{2}, title));
  EXPECT_EQ("new", SubAreaName(database, 2, 2));
  ExpectHr(S_OK, CallSlot(object, 25, LONG{0}));
  EXPECT_EQ("car", SubAreaName(database, 2, 0));
  ExpectHr(S_OK, CallSlot(object, 26, LONG{2}, LONG{1}, &list));
  EXPECT_EQ("1:27 2:26", Describe(ComPtr<IChannelInfoMgr>::Attach(list)));
}

TEST_F(Presets, StayLoadedOverClose) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->Close());
  LONG count = 0;
  ExpectHr(S_OK, database->GetAreaCount(&count));
  EXPECT_EQ(3, count);
  ExpectHr(S_OK, database->LoadPresetOneSegChannelInfo());
  EXPECT_EQ("4:25", Describe(database, 1, 0));
  ExpectHr(E_FAIL, database->SetArea(0, 0));
  ExpectHr(E_FAIL, database->SaveCustomerChannelList(0, "name"));
  ExpectPresetFileUntouched();
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_F(Presets, AListBesideTheHostsOwn) {
  WriteChannels(3);
  const ComPtr<IZorTunedex> database = Open();
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetPresetChannelMgr(0, 0, list.Receive()));
  EXPECT_EQ("1:27 2:26", Describe(list));
  InputSignalType signalType = InputSignalUnknown;
  ExpectHr(S_OK, list->GetSignalType(&signalType));
  EXPECT_EQ(kOneSegment, signalType);
  ExpectMade(ListOf(database, kOneSegment), kOneSegment, 3);
  // The database holds the list until it makes the next one.
  ExpectRefCount(2, list.Get());
  ExpectHr(E_POINTER, database->GetPresetChannelMgr(0, 0, nullptr));
  EXPECT_EQ("", Describe(database, 9, 9));
  ExpectRefCount(1, list.Get());
  EXPECT_EQ("1:27 2:26", Describe(list));
  // Nothing of it is written, and it outlives its database.
  ExpectHr(S_OK, database->GetPresetChannelMgr(1, 0, list.Receive()));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  ExpectHr(S_OK, database->Close());
  EXPECT_EQ("4:25", Describe(list));
}

TEST_F(Presets, OutliveTheirDatabase) {
  ComPtr<IChannelInfoMgr> list;
  ComPtr<IChannelInfoMgr> own;
  {
    const ComPtr<IZorTunedex> database = Open();
    ExpectHr(S_OK, database->SetArea(0, 0));
    own = ListOf(database, kOneSegment);
    ExpectHr(S_OK, database->GetPresetChannelMgr(1, 0, list.Receive()));
  }
  ExpectRefCount(1, list.Get());
  EXPECT_EQ("4:25", Describe(list));
  ExpectHr(S_OK, list->Clear());
  EXPECT_EQ(0U, CountOf(own)) << "closed with its database";
  ExpectPresetFileUntouched();
}

TEST_F(Presets, ASelectionReplacesTheListAndWritesTheFile) {
  WriteChannels(3);
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment);
  ExpectHr(S_OK, database->SetArea(0, 0));
  EXPECT_EQ("1:27 2:26", Describe(list));
  EXPECT_EQ(list.Get(), ListOf(database, kOneSegment).Get());
  EXPECT_EQ("1:27 2:26", ChannelsInFile());
  Bstr name;
  ExpectHr(S_OK, ChannelAt(list, 2)->GetChannelName(name.Receive()));
  ExpectText(OLESTR("Two"), name.Get());
  BOOL dirty = 1;
  ExpectHr(S_OK, list->GetDirty(&dirty));
  EXPECT_EQ(0, dirty) << "it was saved";
  ExpectPresetFileUntouched();
}

TEST_F(Presets, ASelectionIsWrittenUnderTheOpenedCountry) {
  const ComPtr<IZorTunedex> database = Open(kOneSegment, kGermany);
  ExpectHr(S_OK, database->SetArea(1, 0));
  EXPECT_EQ("4:25", ChannelsInFile(kGermany));
  EXPECT_EQ("", ChannelsInFile());
}

TEST_F(Presets, ASelectionOfNothingEmptiesTheList) {
  WriteChannels(3);
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(0, 2));
  EXPECT_EQ(0U, CountOf(ListOf(database, kOneSegment)));
  EXPECT_EQ("", ChannelsInFile());
}

// There is nothing to put in the place of the channels.
TEST_F(Presets, ASelectionWithoutPresetsLeavesTheList) {
  WriteChannels(3);
  const std::string before = ChannelsInFile();
  for (const char* file : {"", "no XML", "<CHANNELTABLE/>"}) {
    std::filesystem::remove(m_directory.File(kPresetFile));
    if (*file != 0) m_directory.Write(kPresetFile, file);
    const ComPtr<IZorTunedex> database = Open();
    ExpectHr(E_FAIL, database->SetArea(0, 0));
    EXPECT_EQ(3U, CountOf(ListOf(database, kOneSegment))) << file;
    EXPECT_EQ(before, ChannelsInFile()) << file;
  }
}

TEST_F(Presets, ASelectionThatCannotBeSavedIsNotTold) {
  std::filesystem::create_directory(m_directory.File(kChannelFile));
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(0, 0));
  EXPECT_EQ("1:27 2:26", Describe(ListOf(database, kOneSegment)));
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(S_OK, database->SetArea(1, 0));
  EXPECT_TRUE(std::filesystem::is_directory(m_directory.File(kChannelFile)));
  EXPECT_EQ(2U, m_directory.Count());
}

TEST_F(Presets, StoringAsACustomerList) {
  WriteChannels(3);
  const std::string channels = m_directory.Read(kChannelFile);
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SaveCustomerChannelList(2, "summer"));
  EXPECT_EQ(3, SubAreaCount(database, 2));
  const ComPtr<IZorTunedex> other = Open();
  EXPECT_EQ("summer", SubAreaName(other, 2, 2));
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, other->GetPresetChannelMgr(2, 2, list.Receive()));
  ExpectMade(list, kOneSegment, 3);
  EXPECT_EQ("1:27 2:26", Describe(other, 0, 0));
  EXPECT_EQ(channels, m_directory.Read(kChannelFile));
}

// The count that comes back says nothing about the store.
TEST_F(Presets, StoringUnderAWrongNumberIsNotTold) {
  WriteChannels(2);
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SaveCustomerChannelList(0, nullptr));
  EXPECT_EQ("home", SubAreaName(database, 2, 0));
  ExpectHr(S_OK, database->SaveCustomerChannelList(5, "lost"));
  EXPECT_EQ(3, SubAreaCount(database, 2));
  EXPECT_EQ("lost", SubAreaName(database, 2, 2));
  EXPECT_EQ("", Describe(database, 2, 2));
  ExpectPresetFileUntouched();
  // Reading the file again takes it away.
  ExpectHr(S_OK, database->LoadPresetOneSegChannelInfo());
  EXPECT_EQ(2, SubAreaCount(database, 2));
}

TEST_F(Presets, StoringAgainKeepsWhatIsNotReplaced) {
  const ComPtr<IZorTunedex> database = Open();
  AddMade(ListOf(database, kOneSegment), kOneSegment, 2);
  ExpectHr(S_OK, database->SaveChannelToFile());
  const ComPtr<IZorTunedex> second = Open();
  ExpectHr(S_OK, second->SaveCustomerChannelList(0, "cottage"));
  const ComPtr<IZorTunedex> third = Open();
  EXPECT_EQ("cottage", SubAreaName(third, 2, 0));
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, third->GetPresetChannelMgr(2, 0, list.Receive()));
  EXPECT_EQ(3U, CountOf(list));
  ExpectChannel(MakeChannel(kOneSegment, 1), Fetch(ChannelAt(list, 1)));
  ExpectChannel(MakeChannel(kOneSegment, 2), Fetch(ChannelAt(list, 2)));
  EXPECT_EQ(25, Fetch(ChannelAt(list, 3)).station.info.lPhysicalChannel);
}

TEST_F(Presets, StoringThatCannotBeWrittenIsNotTold) {
  const ComPtr<IZorTunedex> database = Open();
  std::filesystem::remove(m_directory.File(kPresetFile));
  std::filesystem::create_directory(m_directory.File(kPresetFile));
  ExpectHr(S_OK, database->SaveCustomerChannelList(2, "name"));
  EXPECT_TRUE(FAILED(database->DeleteCustomerChannelList(0)));
  EXPECT_TRUE(std::filesystem::is_empty(m_directory.File(kPresetFile)));
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_F(Presets, DeletingACustomerList) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_FALSE, database->DeleteCustomerChannelList(2));
  ExpectPresetFileUntouched();
  ExpectHr(S_OK, database->DeleteCustomerChannelList(0));
  const ComPtr<IZorTunedex> other = Open();
  EXPECT_EQ(1, SubAreaCount(other, 2));
  EXPECT_EQ("car", SubAreaName(other, 2, 0));
  EXPECT_EQ("2:26", Describe(other, 2, 0));
}

TEST_F(Presets, DeletingTheListThatIsLoaded) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(2, 0));
  ExpectHr(S_OK, database->DeleteCustomerChannelList(0));
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment);
  EXPECT_EQ("1:27 3:25", Describe(list));
  // It can be changed and saved as any other.
  ExpectHr(S_OK, list->RemoveChannelInfo(ChannelAt(list, 1).Get()));
  Add(list, MakeChannel(kOneSegment, 2));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(2U, CountOf(list));
  EXPECT_EQ("2:26", PresetsInFile(2, 0));
  ExpectHr(S_OK, list->Clear());
  ExpectHr(S_OK, database->Close());
}

// What a host must know. After a selection the list is bound to the sub-area in memory: taking
// channels out of it takes them out of the presets there, and the next store or deletion of a
// customer list writes that.
TEST_F(Presets, TrapAChangeAfterASelectionStripsThePresets) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(0, 0));
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment);
  ExpectHr(S_OK, list->RemoveChannelInfo(ChannelAt(list, 1).Get()));
  EXPECT_EQ("", Describe(database, 0, 0)) << "in memory all channels are gone";
  ExpectPresetFileUntouched();
  ExpectHr(S_OK, database->DeleteCustomerChannelList(1));
  EXPECT_EQ("", PresetsInFile(0, 0)) << "and now in the file";
}

// Nor does the list follow the channel file: what is taken out of it stays there.
TEST_F(Presets, TrapAChangeAfterASelectionLeavesChannelsInTheFile) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(0, 0));
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment);
  ExpectHr(S_OK, list->RemoveChannelInfo(ChannelAt(list, 1).Get()));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ("1:26", Describe(list));
  EXPECT_EQ("1:26 2:26", ChannelsInFile());
}

TEST_F(Presets, ReopeningAfterASelectionAvoidsBoth) {
  ExpectHr(S_OK, Open()->SetArea(0, 0));
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment);
  ExpectHr(S_OK, list->RemoveChannelInfo(ChannelAt(list, 1).Get()));
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectHr(S_OK, database->SaveCustomerChannelList(2, "one"));
  EXPECT_EQ("1:26", ChannelsInFile());
  EXPECT_EQ("1:26", PresetsInFile(2, 2));
  EXPECT_EQ("1:27 2:26", PresetsInFile(0, 0));
}

// Reading the presets again does it too: the list stays with the old ones.
TEST_F(Presets, LoadingThePresetsAgainAvoidsItToo) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(0, 0));
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kOneSegment);
  ExpectHr(S_OK, list->Clear());
  ExpectHr(S_OK, database->LoadPresetOneSegChannelInfo());
  ExpectHr(S_OK, database->DeleteCustomerChannelList(1));
  EXPECT_EQ("1:27 2:26", PresetsInFile(0, 0));
}

// The list that the second selection clears follows the presets, not the channel file: what the
// first one wrote there stays under the indexes that the second one does not have.
TEST_F(Presets, TrapASecondSelectionLeavesChannelsOfTheFirst) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(1, 0));
  EXPECT_EQ("4:25", ChannelsInFile());
  ExpectHr(S_OK, database->SetArea(0, 0));
  EXPECT_EQ("1:27 2:26", Describe(ListOf(database, kOneSegment)));
  EXPECT_EQ("1:27 2:26 4:25", ChannelsInFile());
  EXPECT_EQ("4:25", Describe(database, 1, 0)) << "the presets are whole";
}

TEST_F(Presets, ReopeningBetweenSelectionsAvoidsThat) {
  ExpectHr(S_OK, Open()->SetArea(1, 0));
  ExpectHr(S_OK, Open()->SetArea(0, 0));
  EXPECT_EQ("1:27 2:26", ChannelsInFile());
}

// A selection reads the file again, and GetArea answers what that holds: the selection itself is
// not in it, and its numbers are not cut either.
TEST_F(Presets, TrapTheSelectionIsForgotten) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetArea(0, 1));
  ExpectArea(1, 0, database);
  ExpectHr(S_OK, database->SetArea(70000, 1));
  ExpectArea(1, 0, database);
  ExpectHr(S_OK, database->SaveCustomerChannelList(2, "name"));
  ExpectArea(1, 0, Open());
}

// The one way to get a selection into the file: opened for another type as well, the database keeps
// the presets and touches no list.
TEST_F(Presets, ASelectionIsNotedThroughAnotherSignalType) {
  WriteChannels(2);
  const std::string channels = m_directory.Read(kChannelFile);
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SaveCustomerChannelList(-1, ""));
  EXPECT_EQ(3, SubAreaCount(database, 2)) << "in memory alone";
  ExpectHr(S_OK, database->Open(PathText(m_directory.Path()).Get(), kJapan, InputSignalFMRadio));
  ExpectHr(S_OK, database->SetArea(0, 1));
  ExpectArea(0, 1, database);
  ExpectPresetFileUntouched();
  ExpectHr(S_OK, database->DeleteCustomerChannelList(2));
  const ComPtr<IZorTunedex> other = Open();
  ExpectArea(0, 1, other);
  EXPECT_EQ(2, SubAreaCount(other, 2));
  EXPECT_EQ("1:27 3:25", Describe(other, 2, 0));
  EXPECT_EQ(channels, m_directory.Read(kChannelFile));
}

// What is stored is what the channel file's document holds, not the list's unsaved changes.
TEST_F(Presets, TrapUnsavedChangesAreNotStored) {
  WriteChannels(3);
  const ComPtr<IZorTunedex> database = Open();
  Add(ListOf(database, kOneSegment), MakeChannel(kOneSegment, 4));
  ExpectHr(S_OK, database->SaveCustomerChannelList(2, "three"));
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectHr(S_OK, database->SaveCustomerChannelList(3, "four"));
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetPresetChannelMgr(2, 2, list.Receive()));
  ExpectMade(list, kOneSegment, 3);
  ExpectHr(S_OK, database->GetPresetChannelMgr(2, 3, list.Receive()));
  ExpectMade(list, kOneSegment, 4);
}

// Memory runs out while a file is loaded: the lists are then whole, or what they were, and the
// caller is told. A file is not taken for one that cannot be read.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include "reliability/linux/every_allocation.h"
#include "reliability/saved_files.h"

namespace {

constexpr char kOldCatalogue[] =
    "<S><SAT_TABLE><Satellite name='Old' index='0'><C-Band/><Ku-Band><Transponder name='k'/>"
    "</Ku-Band></Satellite></SAT_TABLE><LNB_TABLE><LNB type='Old'/></LNB_TABLE></S>";
constexpr char kCatalogue[] =
    "<S><SAT_TABLE>"
    "<Satellite pos='192' name='First' id='S19E2' region='Europe' division='1' index='0'>"
    "<C-Band><Transponder name='c' freq='3700'/></C-Band>"
    "<Ku-Band><Transponder name='k1' freq='10744' modulation='QPSK'/><Transponder name='k2'/>"
    "</Ku-Band></Satellite>"
    "<Satellite pos='130' name='Second' id='S13E0' index='1'><C-Band/><Ku-Band/></Satellite>"
    "</SAT_TABLE><LNB_TABLE><LNB type='Universal' lowFreq='9750'/><LNB type='C'/></LNB_TABLE></S>";

constexpr char kOldSettings[] =
    "<U><SAT_SETTING><DISH_1/><DISH_2><SAT id='old'/></DISH_2><DISH_3/><DISH_4/></SAT_SETTING></U>";
constexpr char kSettings[] =
    "<U><SAT_SETTING><DISH_1><SAT id='S19E2' band='Ku' LNB_Low='9750' LNB_High='10600'/></DISH_1>"
    "<DISH_2><SAT id='S13E0'/><SAT id='S28E2'/></DISH_2><DISH_3><SAT id='S5W0'/></DISH_3>"
    "<DISH_4><SAT id='a text that is long enough for memory of its own'/></DISH_4>"
    "</SAT_SETTING></U>";

const SavedFile& Channels() { return kSavedFiles[0]; }
const SavedFile& Settings() { return kSavedFiles[2]; }

UINT TranspondersOf(const ComPtr<ISatelliteInfo>& satellite, ESatFreqBand band) {
  ComPtr<ITransponderInfoMgr> list;
  UINT count = 0;
  EXPECT_TRUE(SUCCEEDED(satellite->GetTransponderMgr(band, list.Receive())));
  ExpectHr(S_OK, list->GetTransponderCount(&count));
  return count;
}

/// "satellite:C band:Ku band" of each, and how many LNB types there are.
std::string Describe(const ComPtr<IZorTunedex>& database) {
  ComPtr<ISatelliteInfoMgr> satellites;
  ComPtr<ILNBInfoMgr> lnbs;
  EXPECT_TRUE(SUCCEEDED(database->GetSatelliteInfoMgr(satellites.Receive())));
  EXPECT_TRUE(SUCCEEDED(database->GetLNBInfoMgr(lnbs.Receive())));
  UINT count = 0;
  std::string text;
  ExpectHr(S_OK, satellites->GetSatCount(0, RegionUnknown, SatcoDX_Unknown, &count));
  for (UINT index = 0; index < count; ++index) {
    ComPtr<ISatelliteInfo> satellite;
    ExpectHr(S_OK, satellites->GetSatInfoByIndex(index, 0, RegionUnknown, SatcoDX_Unknown,
                                                 satellite.Receive()));
    if (!satellite) return "?";
    text += std::to_string(index) + ":" +
            std::to_string(TranspondersOf(satellite, SatFreqBand_CBand)) + ":" +
            std::to_string(TranspondersOf(satellite, SatFreqBand_KuBand)) + " ";
  }
  ExpectHr(S_OK, lnbs->GetLNBCount(&count));
  return text + std::to_string(count);
}

ComPtr<IDishSatInfoMgr> DishesIn(const ComPtr<IZorTunedex>& database) {
  ComPtr<IDishSatInfoMgr> dishes;
  EXPECT_TRUE(SUCCEEDED(database->GetDishSatInfoMgr(dishes.Receive())));
  return dishes;
}

/// How many assignments each dish has.
std::string DescribeDishes(const ComPtr<IZorTunedex>& database) {
  std::string text;
  for (UINT dish = 0; dish < 4; ++dish) {
    UINT count = 0;
    ExpectHr(S_OK, DishesIn(database)->GetDishSatCount(&count, dish));
    text += std::to_string(count);
  }
  return text;
}

ComPtr<IChannelInfoMgr> ChannelsOf(const ComPtr<IZorTunedex>& database) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetChannelInfoMgr(Channels().signalType, list.Receive()));
  return list;
}

}  // namespace

TEST(MemoryFaultsOfLoads, Catalogue) {
  const TempDir directory;
  ComPtr<IZorTunedex> database;
  const std::string old = "0:0:1 1";
  const std::string whole = "0:1:2 1:0:0 2";
  const auto prepare = [&] {
    directory.Write("SatelliteInfo.xml", kOldCatalogue);
    database = OpenFor(Settings(), directory);
    ExpectHr(S_OK, database->LoadSatInfoFromFile());
    directory.Write("SatelliteInfo.xml", kCatalogue);
  };
  ForEveryAllocation({prepare, [&] { return database->LoadSatInfoFromFile(); },
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        EXPECT_EQ(hr == S_OK ? whole : old, Describe(database));
                        ExpectHr(S_OK, database->LoadSatInfoFromFile());
                        EXPECT_EQ(whole, Describe(database));
                        EXPECT_EQ(kCatalogue, directory.Read("SatelliteInfo.xml"));
                      }});
}

// What the failed load leaves is saved, and does not take the place of what the file holds.
TEST(MemoryFaultsOfLoads, Channels) {
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(Channels(), directory, 4));
  ComPtr<IZorTunedex> database;
  const auto prepare = [&] {
    database = OpenFor(Channels(), directory);
    ExpectHr(S_OK, ChannelsOf(database)->Close());
  };
  const auto check = [&](HRESULT hr, bool hasFailed) {
    EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
    EXPECT_EQ(hr == S_OK ? 4U : 0U, Channels().count(database.Get()));
    ExpectHr(S_OK, ChannelsOf(database)->SetDirty(1));
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(4U, LoadedRecords(Channels(), directory));
    EXPECT_EQ(1U, directory.Count()) << "a readable file was kept as an unreadable one";
    ExpectHr(S_OK, ChannelsOf(database)->Close());
    ExpectHr(S_OK, database->LoadChannelFromFile());
    EXPECT_EQ(4U, Channels().count(database.Get()));
  };
  ForEveryAllocation({prepare, [&] { return database->LoadChannelFromFile(); }, check});
}

// A list that was loaded stays bound to the element that it came from.
TEST(MemoryFaultsOfLoads, AListThatHasRecordsKeepsThemAndItsElement) {
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(Channels(), directory, 3));
  const std::string before = directory.Read(Channels().name);
  ComPtr<IZorTunedex> database;
  const auto prepare = [&] {
    directory.Write(Channels().name, before);
    database = OpenFor(Channels(), directory);
  };
  const auto check = [&](HRESULT hr, bool) {
    UINT count = 0;
    const ComPtr<IChannelInfoMgr> list = ChannelsOf(database);
    ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
    EXPECT_EQ(hr == S_OK ? 6U : 3U, count);
    ComPtr<IChannelInfo> first;
    ExpectHr(S_OK, list->GetChannelInfoByIndex(1, first.Receive()));
    ExpectHr(S_OK, list->RemoveChannelInfo(first.Get()));
    ExpectHr(S_OK, database->SaveChannelToFile());
    ExpectHr(S_OK, list->Close());
    ExpectHr(S_OK, database->LoadChannelFromFile());
    ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
    EXPECT_EQ(hr == S_OK ? 5U : 2U, count);
  };
  ForEveryAllocation({prepare, [&] { return database->LoadChannelFromFile(); }, check});
}

// Also in other encodings, and where it is malformed: that is told as ever.
TEST(MemoryFaultsOfLoads, FilesInOtherForms) {
  struct {
    std::string bytes;
    const char* saved;
  } const kinds[] = {
      {"<?xml version='1.0' encoding='ISO-8859-1'?><CHANNELTABLE a='\xE9'/>",
       "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE a=\"\xC3\xA9\"/>\r\n"},
      {"<CHANNELTABLE><!-- a comment --><?pi data?>text &amp; more"
       "<x:a xmlns:x='urn:x' x:b='1&#10;2' c='a text that is long enough'/></CHANNELTABLE>",
       "<CHANNELTABLE><!-- a comment --><?pi data?>text &amp; more"
       "<x:a xmlns:x=\"urn:x\" x:b=\"1&#10;2\" c=\"a text that is long "
       "enough\"/></CHANNELTABLE>\r\n"},
      {"<CHANNELTABLE><Country></CHANNELTABLE>", nullptr},
      {"<!DOCTYPE a><a/>", nullptr}};
  for (const auto& kind : kinds) {
    const TempDir directory;
    directory.Write("ChanInfo.xml", "<CHANNELTABLE/>");
    const ComPtr<IZorTunedex> database = OpenFor(Channels(), directory);
    const auto prepare = [&] { directory.Write("ChanInfo.xml", kind.bytes); };
    const auto check = [&](HRESULT hr, bool hasFailed) {
      EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
      if (hr != S_OK) return;
      ExpectHr(S_OK, database->SetStorageType(StorageXML));
      ExpectHr(S_OK, database->SaveChannelToFile());
      EXPECT_EQ(kind.saved == nullptr,
                std::filesystem::remove(directory.File("ChanInfo.xml.unreadable")));
      if (kind.saved != nullptr) {
        EXPECT_EQ(kind.saved, directory.Read("ChanInfo.xml"));
      }
    };
    ForEveryAllocation({prepare, [&] { return database->LoadChannelFromFile(); }, check});
  }
}

TEST(MemoryFaultsOfLoads, Assignments) {
  const TempDir directory;
  ComPtr<IZorTunedex> database;
  const auto prepare = [&] {
    directory.Write(Settings().name, kOldSettings);
    database = OpenFor(Settings(), directory);
    directory.Write(Settings().name, kSettings);
  };
  const auto check = [&](HRESULT hr, bool hasFailed) {
    EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
    EXPECT_EQ(hr == S_OK ? "1211" : "0100", DescribeDishes(database));
    // The list follows the element that it came from.
    const ComPtr<IDishSatInfoMgr> dishes = DishesIn(database);
    ComPtr<IDishSatInfo> record;
    ExpectHr(S_OK, dishes->GetDishSatInfoByIndex(record.Receive(), 1, 0));
    ExpectHr(S_OK, dishes->RemoveDishSatInfo(record.Get(), 1));
    ExpectHr(S_OK, database->SaveUserSettingsToFile());
    ExpectHr(S_OK, database->LoadUserSettingsFromFile());
    EXPECT_EQ(hr == S_OK ? "1111" : "0000", DescribeDishes(database));
    directory.Write(Settings().name, kSettings);
    ExpectHr(S_OK, database->LoadUserSettingsFromFile());
    EXPECT_EQ("1211", DescribeDishes(database));
  };
  ForEveryAllocation({prepare, [&] { return database->LoadUserSettingsFromFile(); }, check});
}

TEST(MemoryFaultsOfLoads, OpenLeavesAnOpenDatabaseAsItWas) {
  const TempDir first;
  const TempDir second;
  first.Write(Settings().name, kOldSettings);
  second.Write(Settings().name, kSettings);
  const Bstr path = Wide(second.Path());
  ComPtr<IZorTunedex> database;
  const auto prepare = [&] {
    database = OpenFor(Settings(), first);
    std::filesystem::remove(first.File(Channels().name));
    std::filesystem::remove(second.File(Channels().name));
  };
  const auto open = [&] { return database->Open(path.Get(), 44, Settings().signalType); };
  const auto check = [&](HRESULT hr, bool hasFailed) {
    EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
    EXPECT_EQ(hr == S_OK ? "1211" : "0100", DescribeDishes(database));
    ExpectHr(S_OK, ChannelsOf(database)->SetDirty(1));
    ExpectHr(S_OK, database->SaveChannelToFile());
    const std::string saved = (hr == S_OK ? second : first).Read(Channels().name);
    EXPECT_NE(std::string::npos,
              saved.find(hr == S_OK ? "countrycode=\"44\"" : "countrycode=\"49\""))
        << saved;
    EXPECT_FALSE((hr == S_OK ? first : second).Has(Channels().name));
    ExpectHr(S_OK, open());
    EXPECT_EQ("1211", DescribeDishes(database));
  };
  ForEveryAllocation({prepare, open, check});
}

TEST(MemoryFaultsOfLoads, OpenLeavesAClosedDatabaseClosed) {
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(Channels(), directory, 2));
  const std::string before = directory.Read(Channels().name);
  const Bstr path = Wide(directory.Path());
  ComPtr<IZorTunedex> database;
  ForEveryAllocation(
      {[&] { ExpectHr(S_OK, NewDatabase(database)); },
       [&] { return database->Open(path.Get(), 49, Channels().signalType); },
       [&](HRESULT hr, bool hasFailed) {
         EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
         if (hr == S_OK) return;
         ComPtr<IChannelInfoMgr> list;
         ExpectHr(E_FAIL, database->GetChannelInfoMgr(Channels().signalType, list.Receive()));
         ExpectHr(E_FAIL, database->SaveChannelToFile());
         ExpectHr(E_FAIL, database->SaveUserSettingsToFile());
         EXPECT_EQ(before, directory.Read(Channels().name));
         EXPECT_EQ(1U, directory.Count());
       }});
}

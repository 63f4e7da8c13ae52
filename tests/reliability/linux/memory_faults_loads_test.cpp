// Memory runs out while a file is loaded: the lists are then whole, or as they were, or the caller
// is told. A file that the parser has no memory for is one that cannot be read.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include "reliability/linux/every_allocation.h"
#include "reliability/saved_files.h"

namespace {

constexpr char kCatalogue[] =
    "<S><SAT_TABLE>"
    "<Satellite pos='192' name='First' id='S19E2' region='Europe' division='1' index='0'>"
    "<C-Band><Transponder name='c' freq='3700'/></C-Band>"
    "<Ku-Band><Transponder name='k1' freq='10744' modulation='QPSK'/><Transponder name='k2'/>"
    "</Ku-Band></Satellite>"
    "<Satellite pos='130' name='Second' id='S13E0' index='1'><C-Band/><Ku-Band/></Satellite>"
    "</SAT_TABLE><LNB_TABLE><LNB type='Universal' lowFreq='9750'/><LNB type='C'/></LNB_TABLE></S>";

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

}  // namespace

TEST(MemoryFaultsOfLoads, Catalogue) {
  const TempDir directory;
  directory.Write("SatelliteInfo.xml", kCatalogue);
  ComPtr<IZorTunedex> database;
  const std::string whole = "0:1:2 1:0:0 2";
  ForEveryAllocation({[&] { database = OpenFor(Settings(), directory); },
                      [&] { return database->LoadSatInfoFromFile(); },
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || hr == E_OUTOFMEMORY || hr == E_FAIL)
                            << HrText(hr);
                        EXPECT_TRUE(hasFailed || hr == S_OK);
                        if (hr == S_OK) {
                          EXPECT_EQ(whole, Describe(database));
                        }
                        if (hr == E_FAIL) {
                          EXPECT_EQ("0", Describe(database));
                        }
                        ExpectHr(S_OK, database->LoadSatInfoFromFile());
                        EXPECT_EQ(whole, Describe(database));
                        EXPECT_EQ(kCatalogue, directory.Read("SatelliteInfo.xml"));
                      }});
}

TEST(MemoryFaultsOfLoads, Channels) {
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(Channels(), directory, 4));
  ComPtr<IZorTunedex> database;
  const auto clear = [&] {
    ComPtr<IChannelInfoMgr> list;
    ExpectHr(S_OK, database->GetChannelInfoMgr(Channels().signalType, list.Receive()));
    ExpectHr(S_OK, list->Close());
  };
  const auto prepare = [&] {
    database = OpenFor(Channels(), directory);
    clear();
  };
  ForEveryAllocation({prepare, [&] { return database->LoadChannelFromFile(); },
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        const UINT count = Channels().count(database.Get());
                        EXPECT_TRUE(count == (hr == S_OK ? 4U : 0U) || (hasFailed && count == 0))
                            << count;
                        clear();
                        ExpectHr(S_OK, database->LoadChannelFromFile());
                        EXPECT_EQ(4U, Channels().count(database.Get()));
                      }});
}

TEST(MemoryFaultsOfLoads, Assignments) {
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(Settings(), directory, 3));
  const std::string before = directory.Read(Settings().name);
  ComPtr<IZorTunedex> database;
  ForEveryAllocation({[&] { database = OpenFor(Settings(), directory); },
                      [&] { return database->LoadUserSettingsFromFile(); },
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        ComPtr<IDishSatInfoMgr> dishes;
                        UINT count = 0;
                        EXPECT_TRUE(SUCCEEDED(database->GetDishSatInfoMgr(dishes.Receive())));
                        ExpectHr(S_OK, dishes->GetDishSatCount(&count, 2));
                        const bool isPart = count != 3 && (count != 0 || !hasFailed);
                        EXPECT_FALSE(hr == S_OK && isPart) << count;
                        ExpectHr(S_OK, database->LoadUserSettingsFromFile());
                        EXPECT_EQ(3U, Settings().count(database.Get()));
                        EXPECT_EQ(before, directory.Read(Settings().name));
                      }});
}

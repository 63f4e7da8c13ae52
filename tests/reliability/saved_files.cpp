#include "reliability/saved_files.h"

#include <filesystem>

#include "core/tunedex.h"
#include "support/expect.h"

namespace {

constexpr DWORD kCountry = 49;
constexpr InputSignalType kChannels = InputSignalFMRadio;

ComPtr<IChannelInfoMgr> ListOf(IZorTunedex* database) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetChannelInfoMgr(kChannels, list.Receive()));
  return list;
}

// Every record tells how many there are, so that records of two saves cannot be taken for one.
void FillChannels(IZorTunedex* database, UINT count) {
  const ComPtr<IChannelInfoMgr> list = ListOf(database);
  ExpectHr(S_OK, list->Clear());
  for (UINT index = 1; index <= count; ++index) {
    ComPtr<IChannelInfo> channel;
    BYTE block[92] = {};
    _StationTuneInfo station = {};
    station.InputSignal = kChannels;
    station.dwFrequency = count;
    station.cbInformation = sizeof(block);
    station.pbInformation = block;
    ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
    channel->SetChannelIndex(index);
    channel->SetStationInfo(&station);
    channel->SetChannelName(Wide("N" + std::to_string(count)).Get());
    ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
  }
  ExpectHr(S_OK, list->SetDirty(1));
}

UINT CountChannels(IZorTunedex* database) {
  const ComPtr<IChannelInfoMgr> list = ListOf(database);
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
  for (UINT index = 1; index <= count; ++index) {
    ComPtr<IChannelInfo> channel;
    DWORD frequency = 0;
    ExpectHr(S_OK, list->GetChannelInfoByIndex(index, channel.Receive()));
    if (channel) channel->GetChannelFreq(&frequency);
    EXPECT_EQ(count, frequency);
  }
  return count;
}

ComPtr<IDishSatInfoMgr> DishesOf(IZorTunedex* database) {
  ComPtr<IDishSatInfoMgr> dishes;
  EXPECT_TRUE(SUCCEEDED(database->GetDishSatInfoMgr(dishes.Receive())));
  return dishes;
}

void FillDishes(IZorTunedex* database, UINT count) {
  const ComPtr<IDishSatInfoMgr> dishes = DishesOf(database);
  ExpectHr(S_OK, dishes->Clear());
  for (UINT index = 0; index < count; ++index) {
    ComPtr<IDishSatInfo> record;
    ExpectHr(S_OK, dishes->CreateDishSatInfo(record.Receive()));
    record->SetID(Wide("S" + std::to_string(index)).Get());
    record->SetIndex(index);
    record->SetLowFreq(count);
    ExpectHr(S_OK, dishes->AddDishSatInfo(record.Get(), 2));
  }
}

UINT CountDishes(IZorTunedex* database) {
  const ComPtr<IDishSatInfoMgr> dishes = DishesOf(database);
  UINT count = 0;
  ExpectHr(S_OK, dishes->GetDishSatCount(&count, 2));
  for (UINT index = 0; index < count; ++index) {
    ComPtr<IDishSatInfo> record;
    DWORD frequency = 0;
    ExpectHr(S_OK, dishes->GetDishSatInfoByIndex(record.Receive(), 2, index));
    if (record) record->GetLowFreq(&frequency);
    EXPECT_EQ(count, frequency);
  }
  return count;
}

HRESULT SaveChannels(IZorTunedex* database) { return database->SaveChannelToFile(); }
HRESULT SaveSettings(IZorTunedex* database) { return database->SaveUserSettingsToFile(); }

}  // namespace

const std::vector<SavedFile> kSavedFiles = {
    {"channels", "ChanInfo.xml", kChannels, StorageXML, FillChannels, SaveChannels, CountChannels},
    {"channels, pre-formatted", "ChanInfo.xml", kChannels, StoragePreFmtXML, FillChannels,
     SaveChannels, CountChannels},
    {"settings", "UserSettings.xml", InputSignalDVBSatellite, StorageXML, FillDishes, SaveSettings,
     CountDishes},
};

HRESULT NewDatabase(ComPtr<IZorTunedex>& database) {
  void* made = nullptr;
  const HRESULT hr = CTunedex::CreateInstance(nullptr, IID_IZorTunedex, &made);
  database = ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(made));
  return hr;
}

ComPtr<IZorTunedex> OpenFor(const SavedFile& file, const TempDir& directory) {
  ComPtr<IZorTunedex> database;
  ExpectHr(S_OK, NewDatabase(database));
  const Bstr path = Wide(directory.Path());
  ExpectHr(S_OK, database->Open(path.Get(), kCountry, file.signalType));
  ExpectHr(S_OK, database->SetStorageType(file.storage));
  return database;
}

HRESULT SaveRecords(const SavedFile& file, const TempDir& directory, UINT count) {
  const ComPtr<IZorTunedex> database = OpenFor(file, directory);
  file.fill(database.Get(), count);
  return file.save(database.Get());
}

UINT LoadedRecords(const SavedFile& file, const TempDir& directory) {
  return file.count(OpenFor(file, directory).Get());
}

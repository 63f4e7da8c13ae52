#include "reliability/saved_files.h"

#include <cstdio>
#include <cstdlib>

#include "core/station_blocks.h"
#include "database/tunedex.h"
#include "support/expect.h"

namespace {

constexpr InputSignalType kChannels = InputSignalFMRadio;
constexpr InputSignalType kOneSegment = InputSignalISDBTerrestrialOneSeg;

ComPtr<IChannelInfoMgr> ListOf(IZorTunedex* database, InputSignalType signalType) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetChannelInfoMgr(signalType, list.Receive()));
  return list;
}

UINT CountOf(const ComPtr<IChannelInfoMgr>& list) {
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
  return count;
}

// Every record tells how many there are, so that records of two saves cannot be taken for one.
void Fill(const ComPtr<IChannelInfoMgr>& list, InputSignalType signalType, UINT count) {
  ExpectHr(S_OK, list->Clear());
  std::vector<BYTE> block(station_blocks::Find(signalType)->size);
  for (UINT index = 1; index <= count; ++index) {
    ComPtr<IChannelInfo> channel;
    _StationTuneInfo station = {};
    station.InputSignal = signalType;
    station.dwFrequency = count;
    station.cbInformation = static_cast<DWORD>(block.size());
    station.pbInformation = block.data();
    ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
    channel->SetChannelIndex(index);
    channel->SetStationInfo(&station);
    channel->SetChannelName(Wide("N" + std::to_string(count)).Get());
    ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
  }
  ExpectHr(S_OK, list->SetDirty(1));
}

void ExpectChannels(UINT count, const ComPtr<IChannelInfoMgr>& list) {
  for (UINT index = 1; index <= count; ++index) {
    ComPtr<IChannelInfo> channel;
    DWORD frequency = 0;
    ExpectHr(S_OK, list->GetChannelInfoByIndex(index, channel.Receive()));
    if (channel) channel->GetChannelFreq(&frequency);
    EXPECT_EQ(count, frequency);
  }
}

void FillChannels(IZorTunedex* database, UINT count) {
  Fill(ListOf(database, kChannels), kChannels, count);
}

UINT CountChannels(IZorTunedex* database) {
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kChannels);
  const UINT count = CountOf(list);
  ExpectChannels(count, list);
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

// One preset, and the area for the customer's lists. What the lists are made of is no part of it.
constexpr char kPresets[] =
    "<T><Country countrycode='81'><ChannelSet inputSignalType='176'>"
    "<Area AreaIndex='0' name='North'><SubArea SubAreaIndex='0' name='Harbour'>"
    "<Channel name='T25l' index='1' physicalChannel='27' Frequency='1'/></SubArea></Area>"
    "<Area AreaIndex='1' name='Mine'/></ChannelSet></Country></T>";

// The channels to be stored are those of the channel file.
void FillCustomerList(IZorTunedex* database, UINT count) {
  Fill(ListOf(database, kOneSegment), kOneSegment, count);
  ExpectHr(S_OK, database->SaveChannelToFile());
}

// Named by the count. Channels that an older, longer list had stay behind the new ones.
HRESULT SaveCustomerList(IZorTunedex* database) {
  char name[16];
  std::snprintf(name, sizeof(name), "%u", CountOf(ListOf(database, kOneSegment)));
  return database->SaveCustomerChannelList(0, name);
}

// A file that cannot be read has no presets either.
UINT CountCustomerList(IZorTunedex* database) {
  ComPtr<IChannelInfoMgr> list;
  LONG areas = 0;
  if (database->GetAreaCount(&areas) != S_OK) return 0;
  ExpectHr(S_OK, database->GetPresetChannelMgr(0, 0, list.Receive()));
  ExpectChannels(1, list);
  CHAR name[260] = "0";
  const HRESULT hr = database->GetSubAreaNameByIndex(kCustomerArea, 0, name);
  EXPECT_TRUE(hr == S_OK || hr == E_POINTER) << HrText(hr);
  const auto count = static_cast<UINT>(std::atoi(name));
  ExpectHr(S_OK, database->GetPresetChannelMgr(kCustomerArea, 0, list.Receive()));
  ExpectChannels(count, list);
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
    {"presets", "PreSetChannelInfo.xml", kOneSegment, StorageXML, FillCustomerList,
     SaveCustomerList, CountCustomerList, kPresets, "ChanInfo.xml"},
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
  if (file.start != nullptr && !directory.Has(file.name)) directory.Write(file.name, file.start);
  const Bstr path = Wide(directory.Path());
  ExpectHr(S_OK, database->Open(path.Get(), kSavedCountry, file.signalType));
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

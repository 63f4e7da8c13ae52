// What the header for C++ reads is what the interfaces answer.
#include <algorithm>
#include <iterator>
#include <ranges>

#include "api/api_home.h"
#include "platform/bstr.h"

using zortunedex::channel;

namespace {

/// A list of the interfaces, beside what is tested.
class RawList {
 public:
  RawList(const std::filesystem::path& directory, SampleSet set) {
    ComPtr<IClassFactory> factory;
    m_component.GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, (void**)factory.Receive());
    factory->CreateInstance(nullptr, IID_IZorTunedex, (void**)m_database.Receive());
    const auto type = static_cast<InputSignalType>(set.kind);
    m_database->Open(Bstr(directory.string<OLECHAR>()).Get(), set.country, type);
    m_database->GetChannelInfoMgr(type, m_list.Receive());
  }

  UINT Count() const {
    UINT count = 0;
    m_list->GetChannelCount(0xFFFFFFFF, &count);
    return count;
  }
  ComPtr<IChannelInfo> At(UINT index) const {
    ComPtr<IChannelInfo> record;
    m_list->GetChannelInfoByIndex(index, record.Receive());
    return record;
  }

 private:
  Component m_component;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
};

void ExpectAsRecord(const channel& c, IChannelInfo* record) {
  Bstr text;
  record->GetChannelDspName(text.Receive());
  EXPECT_EQ(text.View(), *zortunedex::detail::ToWide(c.display_name()));
  if (SUCCEEDED(record->GetChannelName(text.Receive()))) {
    EXPECT_EQ(text.View(), *zortunedex::detail::ToWide(c.name()));
  }
  UINT favor = 7;
  BOOL lock = 7;
  DWORD frequency = 7;
  UINT number = 7;
  BOOL scrambled = 7;
  BOOL mhp = 7;
  EServiceType service = ServiceUnknown;
  record->GetFavor(&favor);
  record->GetLock(&lock);
  record->GetChannelFreq(&frequency);
  record->GetChannelNo(&number);
  record->IsScrambled(&scrambled);
  record->GetMhp(&mhp);
  if (FAILED(record->GetServiceType(&service))) service = ServiceUnknown;
  EXPECT_EQ(favor, c.favorite_mark());
  EXPECT_EQ(favor != 0, c.favorite());
  EXPECT_EQ(lock != 0, c.locked());
  EXPECT_EQ(frequency, c.frequency());
  EXPECT_EQ(number, c.number());
  EXPECT_EQ(scrambled != 0, c.scrambled());
  EXPECT_EQ(mhp != 0, c.has_mhp());
  EXPECT_EQ(static_cast<std::int32_t>(service), static_cast<std::int32_t>(c.service()));
}

TEST(ApiReading, EveryChannelOfTheSamplesIsAsTheInterfacesHaveIt) {
  const ApiHome home;
  for (const SampleSet& set : kSampleSets) {
    const RawList raw(home.Path(), set);
    const zortunedex::database db = home.Open(set.country, set.kind);
    ASSERT_GT(raw.Count(), 0U) << name_of(set.kind);
    ASSERT_EQ(raw.Count(), db.channels().size()) << name_of(set.kind);
    UINT index = 0;
    for (const channel& c : db.channels()) {
      EXPECT_EQ(++index, c.index());
      EXPECT_EQ(set.kind, c.signal());
      ExpectAsRecord(c, raw.At(index).Get());
    }
  }
}

TEST(ApiReading, FieldsHaveTheirTypes) {
  const ApiHome home;
  const channel c = home.Satellite().channels().at_index(1);
  static_assert(std::same_as<std::int64_t, decltype(c.get<"serviceID">())>);
  static_assert(std::same_as<std::string, decltype(c.get<"networkName">())>);
  static_assert(std::same_as<Polarisation, decltype(c.get<"polarisation">())>);
  EXPECT_EQ("Das Erste HD", c.get<"name">());
  EXPECT_EQ(BDA_POLARISATION_LINEAR_H, c.get<"polarisation">());
  EXPECT_EQ(22000, c.get<"symbolRate">());
  EXPECT_EQ(zortunedex::field_value(std::int64_t{22000}), c.get("symbolRate"));
  EXPECT_EQ(zortunedex::field_value(c.name()), c.get("name"));
  EXPECT_EQ("name", c.fields().front());
  EXPECT_TRUE(std::ranges::count(c.fields(), "LNB_SwitchFreq") == 1);
}

TEST(ApiReading, EveryNameStandsForOneTypeOfValue) {
  for (const auto& layout : zortunedex::detail::kLayouts) {
    zortunedex::detail::ForEachRow(layout, [](const station_blocks::Field& row) {
      EXPECT_TRUE(zortunedex::detail::MeaningOf(row.attribute).isOne) << row.attribute;
    });
  }
}

TEST(ApiReading, EveryKindThatTheFileKeepsIsThere) {
  for (std::int32_t type = 0; type < 256; ++type) {
    const station_blocks::Layout* layout = station_blocks::Find(static_cast<InputSignalType>(type));
    const bool isThere = zortunedex::name_of(zortunedex::signal{type}) != "unknown";
    EXPECT_EQ(layout != nullptr, isThere) << type;
    if (layout == nullptr) continue;
    zortunedex::detail::ForEachRow(*layout, [](const station_blocks::Field& row) {
      EXPECT_TRUE(zortunedex::detail::MeaningOf(row.attribute).isThere) << row.attribute;
    });
    for (const station_blocks::StreamList& list : layout->lists) {
      EXPECT_EQ(list.entrySize, zortunedex::detail::EntrySizeOf(list.element)) << list.element;
    }
  }
}

TEST(ApiReading, AFieldOfAnotherSignalTypeIsAnError) {
  const ApiHome home;
  const channel c = home.Open(49, zortunedex::signal::dvb_terrestrial).channels().at_index(1);
  const auto raised = ExpectError("DVBTerrestrial have none", [&] { c.get<"symbolRate">(); });
  EXPECT_NE(std::string::npos, raised.where().find("channel 1 of "));
  ExpectError("have none", [&] { c.get("noSuchField"); });
  ExpectError("have none", [&] { c.components(); });
  const channel fm = home.Open(49, zortunedex::signal::fm_radio).channels().at_index(1);
  ExpectError("have none", [&] { fm.streams<"AudioStream">(); });
}

TEST(ApiReading, StreamsAndComponentsAreLists) {
  const ApiHome home;
  const channel c = home.Open(1, zortunedex::signal::atsc_antenna).channels().at_index(1);
  const std::vector<zortunedex::stream> expected = {{129, 52, 2021}, {129, 53, 259}};
  EXPECT_EQ(expected, c.streams<"AudioStream">());
  bool hasData = false;
  for (const channel& s : home.Satellite().channels()) {
    EXPECT_EQ(s.get<"numOfDsmccStreams">(),
              static_cast<std::int64_t>(s.streams<"DsmccStream">().size()));
    hasData = hasData || !s.streams<"DsmccStream">().empty();
  }
  EXPECT_TRUE(hasData);
  const channel d = home.Open(82, zortunedex::signal::tdmb).channels().at_index(1);
  EXPECT_EQ(d.get<"numOfComponents">(), static_cast<std::int64_t>(d.components().size()));
  EXPECT_FALSE(d.components().empty());
}

TEST(ApiReading, ViewsOutliveWhatTheyCameFrom) {
  const ApiHome home;
  auto favorites = [&] {
    const zortunedex::library library;
    return library.open(home.Path(), 49, zortunedex::signal::dvb_satellite).channels();
  }() | std::views::filter(&channel::favorite);
  std::size_t count = 0;
  for (const channel& c : favorites) {
    EXPECT_TRUE(c.favorite());
    EXPECT_FALSE(c.name().empty());
    ++count;
  }
  EXPECT_GT(count, 0U);
  zortunedex::database db = home.Satellite();
  for (const channel& c : db.channels()) {
    db.edit([](zortunedex::channel_list& list) { list.clear(); });
    EXPECT_FALSE(c.name().empty());
  }
  EXPECT_TRUE(db.channels().empty());
}

TEST(ApiReading, GapsAndRepeatedIndexesAreRead) {
  const ApiHome home(false);
  home.Write("ChanInfo.xml",
             "<CHANNELTABLE><Country countrycode=\"49\"><ChannelSet inputSignalType=\"5\">"
             "<Channel name=\"a\" index=\"7\"/><Channel name=\"b\" index=\"3\"/>"
             "<Channel name=\"c\" index=\"3\"/></ChannelSet></Country></CHANNELTABLE>");
  zortunedex::database db = home.Open(49, zortunedex::signal::fm_radio);
  std::vector<unsigned> indexes;
  std::ranges::transform(db.channels(), std::back_inserter(indexes), &channel::index);
  EXPECT_EQ((std::vector<unsigned>{3, 3, 7}), indexes);
  ExpectError("renumber", [&] {
    db.edit([](zortunedex::channel_list& list) { list.at_index(7).set_favorite(); });
  });
  db.edit([](zortunedex::channel_list& list) { list.renumber(); });
  EXPECT_EQ(3U, db.channels().size());
  EXPECT_EQ("a", db.channels().at_index(3).name());
}

TEST(ApiReading, WhatIsNotThereIsSaid) {
  const ApiHome home;
  const zortunedex::library library;
  const auto missing = home.Path() / u8"für immer";
  const auto raised = ExpectError(
      "no such directory", [&] { library.open(missing, 49, zortunedex::signal::dvb_satellite); });
  EXPECT_EQ(E_INVALIDARG, raised.result());
  EXPECT_EQ("open", raised.operation());
  EXPECT_EQ(zortunedex::detail::Shown(missing), raised.where());
  EXPECT_NE(std::string::npos, std::string(raised.what()).find("80070057"));
  ExpectError("no such directory", [&] {
    library.open(home.Path() / "ChanInfo.xml", 49, zortunedex::signal::fm_radio);
  });
  ExpectError("keeps no channels of it", [&] {
    library.open(home.Path(), 49, static_cast<zortunedex::signal>(InputSignalDVBCable));
  });
  ExpectError("none of that name", [] { zortunedex::signal_named("DVBMoon"); });
  EXPECT_EQ(zortunedex::signal::tdmb, zortunedex::signal_named("TDMBMobile"));
  ExpectError("none with that index", [&] { home.Satellite().channels().at_index(999); });
}

TEST(ApiReading, ADirectoryStaysWhenTheProgramsOwnChanges) {
  const ApiHome home;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(home.Path().parent_path());
  zortunedex::database db =
      zortunedex::library().open(u8"§ 8", 49, zortunedex::signal::dvb_satellite);
  std::filesystem::current_path(before);
  EXPECT_EQ(std::filesystem::path(u8"§ 8"), db.directory());
  db.edit([](zortunedex::channel_list& list) { list.remove(1); });
  EXPECT_EQ(57U, home.Satellite().channels().size());
  ExpectError("no such directory",
              [] { zortunedex::library().open("", 49, zortunedex::signal::dvb_satellite); });
}

TEST(ApiReading, NoFileIsNoChannelsAndADamagedOneAnError) {
  const ApiHome home(false);
  EXPECT_TRUE(home.Satellite().channels().empty());
  for (const char* bytes : {"<CHANNELTABLE>", "", "a", "<CHANNELTABLE a=\"&\"/>"}) {
    home.Write("ChanInfo.xml", bytes);
    const auto raised = ExpectError("not well-formed", [&] { home.Satellite(); });
    EXPECT_NE(std::string::npos, raised.where().find("ChanInfo.xml"));
    EXPECT_EQ(bytes, home.Read("ChanInfo.xml"));
    EXPECT_FALSE(home.Has("ChanInfo.xml.unreadable"));
  }
  std::filesystem::remove(home.Path() / "ChanInfo.xml");
  std::filesystem::create_directory(home.Path() / "ChanInfo.xml");
  ExpectError("it is no file", [&] { home.Satellite(); });
}

TEST(ApiReading, LackOfMemoryIsAnErrorLikeEveryOther) {
  const auto raised = ExpectError("no memory is left", [] {
    zortunedex::detail::Guarded("read", "here", [] { throw ComError(E_OUTOFMEMORY); });
  });
  EXPECT_EQ(E_OUTOFMEMORY, raised.result());
}

TEST(ApiReading, RefreshSeesWhatOthersWrote) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  const std::size_t count = db.channels().size();
  home.Satellite().edit([](zortunedex::channel_list& list) { list.remove(1); });
  EXPECT_EQ(count, db.channels().size());
  db.refresh();
  EXPECT_EQ(count - 1, db.channels().size());
}

}  // namespace

#include "kit/model/field_setter.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/model/channel_layout.h"

namespace zortunedex::kit {

namespace {

using station_blocks::Source;

class FieldSetters : public testing::Test {
 protected:
  void Set(const std::string& field, const std::string& value, Source source = Source::Block) {
    m_setter.Set(m_channel, {field, value, source});
  }
  std::uint32_t Value(const char* attribute) const {
    const station_blocks::Field* field = station_blocks::FindField(m_layout.channel, attribute);
    if (field == nullptr) field = station_blocks::FindField(m_layout.elementStreams, attribute);
    if (field == nullptr) field = station_blocks::FindField(m_layout.satelliteParams, attribute);
    EXPECT_NE(nullptr, field) << attribute;
    return field == nullptr
               ? 0
               : station_blocks::Fetch(m_channel.block.data() + field->offset, field->width);
  }

  Home m_home{Home::Start::Empty};
  Database m_database{m_home.At(49, InputSignalDVBSatellite)};
  NarrowText m_narrow{m_database};
  FieldSetter m_setter{InputSignalDVBSatellite, m_narrow};
  const station_blocks::Layout& m_layout = LayoutOf(InputSignalDVBSatellite);
  Channel m_channel = EmptyChannel(m_layout);
};

TEST_F(FieldSetters, TakeTheNamesOfTheRecord) {
  Set("displayName", "Shown");
  Set("frequency", "12544750");
  Set("number", "7");
  Set("tsid", "-1");
  Set("favorite", "3");
  EXPECT_EQ(Wide("Shown"), m_channel.displayName);
  EXPECT_EQ(12544750U, m_channel.frequency);
  EXPECT_EQ(7U, m_channel.number);
  EXPECT_EQ(-1, m_channel.tsid);
  EXPECT_EQ(3U, m_channel.favorite);
  // The record answers a word; what is set is the number in the file.
  Set("serviceType", "25");
  EXPECT_EQ(25U, Value("serviceType"));
  ExpectRaised<InvalidArgument>("channels of DVBSatellite have no mhp", [&] { Set("mhp", "1"); });
}

TEST_F(FieldSetters, TakeTheNamesOfTheBlockAndItsElements) {
  Set("block.serviceType", "25");
  Set("SatelliteParams.symbolRate", "22000");
  Set("block.SatelliteParams.orbitalPosition", "192");
  Set("block.AudioStream[1].pid", "257");
  EXPECT_EQ(25U, Value("serviceType"));
  EXPECT_EQ(22000U, Value("symbolRate"));
  EXPECT_EQ(192U, Value("orbitalPosition"));
  EXPECT_EQ(1U, Value("numOfAudioStreams"));
}

TEST_F(FieldSetters, TakeALockAsItIsShown) {
  for (const char* word : {"true", "Yes", "on", "1"}) {
    m_channel.lock = 0;
    Set("lock", word);
    EXPECT_EQ(1, m_channel.lock) << word;
  }
  for (const char* word : {"false", "no", "OFF", "0"}) {
    m_channel.lock = 1;
    Set("lock", word);
    EXPECT_EQ(0, m_channel.lock) << word;
  }
  EXPECT_THROW(Set("lock", "maybe"), InvalidArgument);
}

TEST_F(FieldSetters, StoreNumbersWordsAndTexts) {
  EXPECT_EQ(UINT32_MAX, Value("polarisation"));
  Set("serviceID", "0x65");
  Set("polarisation", "linearv");
  Set("nameDisplay", "Shown");
  Set("--freq", "12544750", Source::Frequency);
  EXPECT_EQ(101U, Value("serviceID"));
  EXPECT_EQ(2U, Value("polarisation"));
  EXPECT_EQ(Wide("Shown"), m_channel.displayName);
  EXPECT_EQ(12544750U, m_channel.frequency);
}

TEST_F(FieldSetters, GrowListsAndEmptyWhatIsDropped) {
  Set("AudioStream[2].pid", "258");
  EXPECT_EQ(2U, Value("numOfAudioStreams"));
  Set("numOfAudioStreams", "0");
  Set("AudioStream[2].type", "4");
  const station_blocks::StreamList* audio = nullptr;
  for (const station_blocks::StreamList& list : m_layout.lists) {
    if (list.element == std::string("AudioStream")) audio = &list;
  }
  ASSERT_NE(nullptr, audio);
  const station_blocks::Field* pid =
      station_blocks::FindField(station_blocks::EntryFields(audio->entrySize), "pid");
  ASSERT_NE(nullptr, pid);
  EXPECT_EQ(
      0U, station_blocks::Fetch(
              m_channel.block.data() + audio->offset + audio->entrySize + pid->offset, pid->width));
}

TEST_F(FieldSetters, RefuseWhatMakesNoSense) {
  const Channel before = m_channel;
  const auto expect = [this](const char* message, const char* field, const char* value) {
    ExpectRaised<InvalidArgument>(message, [&] { Set(field, value); });
  };
  expect("channels of DVBSatellite have no colour", "colour", "red");
  expect("polarisation takes NotSet, LinearH, LinearV, CircularL or CircularR, not 'up'",
         "polarisation", "up");
  expect("channels of DVBSatellite have no list Stream", "Stream[1].pid", "1");
  EXPECT_THROW(Set("AudioStream[0].pid", "1"), InvalidArgument);
  EXPECT_THROW(Set("AudioStream[1", "1"), InvalidArgument);
  EXPECT_THROW(Set("serviceID", "many"), InvalidArgument);
  EXPECT_THROW(Set("nameDisplay", "\xFF"), InvalidArgument);
  EXPECT_THROW(Set("networkName", std::string(2000, 'x')), Failure);
  EXPECT_TRUE(SameChannels({before}, {m_channel}));
}

TEST(ChannelLayouts, AreThereForWhatTheFileHolds) {
  ExpectRaised<Failure>("the file cannot hold channels of DVBCable",
                        [] { LayoutOf(InputSignalDVBCable); });
}

}  // namespace

}  // namespace zortunedex::kit

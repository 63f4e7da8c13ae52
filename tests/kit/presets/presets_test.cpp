#include "kit/presets/presets.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/model/channel_table.h"
#include "kit/presets/customer_lists.h"
#include "kit/presets/preset_note.h"
#include "kit/presets/selection.h"

namespace zortunedex::kit {

namespace {

TEST(PresetValues, HoldAreasAndTheirLists) {
  const Home home;
  const Presets presets(home.OneSegment());
  EXPECT_EQ(9, presets.AreaCount());
  ASSERT_EQ(9U, presets.Areas().size());
  EXPECT_EQ(7U, presets.Area(2).lists.size());
  EXPECT_TRUE(presets.IsCustomer(presets.Area(8)));
  EXPECT_FALSE(presets.List(2, 5).channels.empty());
  EXPECT_EQ(nullptr, presets.FindList(2, 7));
  ExpectRaised<Failure>("no sub-area 7 of area 2", [&] { presets.List(2, 7); });
  ExpectRaised<Failure>("no area 9", [&] { presets.Area(9); });
  const Home nothing(Home::Start::Empty);
  ExpectRaised<Failure>("there is no PreSetChannelInfo.xml",
                        [&] { Presets none(nothing.OneSegment()); });
}

TEST(PresetValues, BecomeTheChannelList) {
  const Home home;
  const Presets presets(home.OneSegment());
  const PresetList& list = presets.List(2, 5);
  SelectList(home.OneSegment(), 2, list, {});
  EXPECT_TRUE(SameChannels(list.channels, ReadTable(home.OneSegment()).channels));
}

TEST(PresetValues, TakeTheCustomersLists) {
  const Home home;
  const LONG number = Presets(home.OneSegment()).CustomerArea().count;
  const std::size_t channels = ReadTable(home.OneSegment()).channels.size();
  const StoredList stored = StoreCustomerList(home.OneSegment(), number, Wide("Mine"));
  EXPECT_EQ(channels, stored.stored);
  EXPECT_EQ(0U, stored.replaced);
  EXPECT_EQ(0U, stored.kept);
  EXPECT_EQ(channels, StoreCustomerList(home.OneSegment(), number, Wide("Mine")).replaced);
  EXPECT_EQ(Wide("Mine"), Presets(home.OneSegment()).List(8, number).name);
  std::vector<std::string> notes;
  const PresetList dropped = DropCustomerList(
      home.OneSegment(), number, [&notes](const std::string& note) { notes.push_back(note); });
  EXPECT_EQ(Wide("Mine"), dropped.name);
  EXPECT_EQ(channels, dropped.channels.size());
  EXPECT_TRUE(notes.empty());
  EXPECT_EQ(number, Presets(home.OneSegment()).CustomerArea().count);
  EXPECT_THROW(StoreCustomerList(home.OneSegment(), number + 1, Wide("Gap")), Failure);
}

TEST(PresetValues, NotesNumbersOfSixteenBitsAlone) {
  const Home home;
  const Presets presets(home.OneSegment());
  const auto expect = [&](LONG area, LONG subArea, const char* message) {
    ExpectRaised<Failure>(message,
                          [&] { preset_note::Write(home.OneSegment(), presets, area, subArea); });
  };
  expect(65536, 0, "numbers above 65535 cannot be noted");
  expect(0, 65536, "numbers above 65535 cannot be noted");
  preset_note::Write(home.OneSegment(), presets, 65535, 65535);
  const Presets noted(home.OneSegment());
  EXPECT_EQ(65535, noted.SelectedArea());
  EXPECT_EQ(65535, noted.SelectedSubArea());
}

}  // namespace

}  // namespace zortunedex::kit

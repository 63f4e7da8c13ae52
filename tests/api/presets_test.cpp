// Presets of one-segment reception and the customer's lists.
#include <ranges>

#include "api/api_home.h"

using zortunedex::channel;
using zortunedex::preset_list;
using zortunedex::preset_table;

namespace {

template <typename Channels>
std::vector<std::string> NamesOf(const Channels& channels) {
  std::vector<std::string> names;
  for (const channel& c : channels) names.push_back(c.name());
  return names;
}

/// A sub-area with channels that is not the customer's.
const preset_list& Some(const preset_table& presets, std::int32_t& area) {
  for (const zortunedex::preset_area& candidate : presets.areas) {
    for (const preset_list& list : candidate.lists) {
      if (candidate.number == presets.customer_area || list.channels.empty()) continue;
      area = candidate.number;
      return list;
    }
  }
  throw std::runtime_error("the sample has no presets");
}

TEST(ApiPresets, TheTableIsRead) {
  const ApiHome home;
  const preset_table presets = home.OneSeg().presets();
  EXPECT_EQ(presets.customer_area, static_cast<std::int32_t>(presets.areas.size()) - 1);
  for (const zortunedex::preset_area& area : presets.areas) {
    EXPECT_FALSE(area.name.empty());
    for (const preset_list& list : area.lists) {
      EXPECT_FALSE(list.name.empty());
      EXPECT_EQ(&list, &presets.list(area.number, list.number));
    }
  }
  ExpectError("there is none", [&] { presets.area(-1); });
  ExpectError("none in area 0", [&] { presets.list(0, 9999); });
}

TEST(ApiPresets, ASelectionReplacesTheChannels) {
  const ApiHome home;
  if (!HoldsJapaneseNames(home)) GTEST_SKIP() << "the names are no text here";
  zortunedex::database db = home.OneSeg();
  const std::string satellites = home.Satellite().channels().at_index(1).name();
  std::int32_t area = 0;
  const preset_table presets = db.presets();
  const preset_list& list = Some(presets, area);
  db.select_preset(area, list.number);
  EXPECT_EQ(NamesOf(list.channels), NamesOf(db.channels()));
  EXPECT_EQ(NamesOf(list.channels), NamesOf(home.OneSeg().channels()));
  // The list is no longer bound to the preset.
  db.edit([](zortunedex::channel_list& channels) { channels.clear(); });
  EXPECT_EQ(NamesOf(list.channels), NamesOf(db.presets().list(area, list.number).channels));
  EXPECT_EQ(satellites, home.Satellite().channels().at_index(1).name());
}

TEST(ApiPresets, AnUnknownSubAreaLeavesTheChannels) {
  const ApiHome home;
  const std::string before = home.Read("ChanInfo.xml");
  zortunedex::database db = home.OneSeg();
  ExpectError("none in area 0", [&] { db.select_preset(0, 9999); });
  ExpectError("there is none", [&] { db.select_preset(99, 0); });
  EXPECT_EQ(before, home.Read("ChanInfo.xml"));
}

TEST(ApiPresets, CustomerListsComeAndGo) {
  const ApiHome home;
  if (!HoldsJapaneseNames(home)) GTEST_SKIP() << "the names are no text here";
  zortunedex::database db = home.OneSeg();
  const preset_table before = db.presets();
  const auto count = static_cast<std::int32_t>(before.customer_lists().size());
  EXPECT_EQ(count, db.save_customer_list("Zuhause"));
  EXPECT_EQ(count + 1, db.save_customer_list("Urlaub"));
  const preset_table stored = db.presets();
  EXPECT_EQ("Zuhause", stored.list(stored.customer_area, count).name);
  EXPECT_EQ(NamesOf(db.channels()), NamesOf(stored.list(stored.customer_area, count + 1).channels));
  db.edit([](zortunedex::channel_list& channels) { channels.clear(); });
  db.select_preset(stored.customer_area, count);
  EXPECT_FALSE(db.channels().empty());
  db.delete_customer_list(count);
  const preset_table after = db.presets();
  EXPECT_EQ("Urlaub", after.list(after.customer_area, count).name);
  db.delete_customer_list(count);
  EXPECT_EQ(before.customer_lists().size(), db.presets().customer_lists().size());
  ExpectError("there is none", [&] { db.presets().area(99); });
  ExpectError("none in area", [&] { db.delete_customer_list(count); });
}

TEST(ApiPresets, TheNoteOfASelectionMovesWithItsList) {
  const ApiHome home;
  if (!HoldsJapaneseNames(home)) GTEST_SKIP() << "the names are no text here";
  zortunedex::database db = home.OneSeg();
  const std::int32_t first = db.save_customer_list("eins");
  db.save_customer_list("zwei");
  db.save_customer_list("drei");
  const auto area = std::to_string(db.presets().customer_area);
  std::string file = home.Read("PreSetChannelInfo.xml");
  const std::string set = "inputSignalType=\"176\"";
  const std::size_t at = file.find(set);
  ASSERT_NE(std::string::npos, at);
  const std::size_t end = file.find('>', at);
  ASSERT_EQ(std::string::npos, file.substr(at, end - at).find("Area="));
  file.insert(at + set.size(),
              " Area=\"" + area + "\" SubArea=\"" + std::to_string(first + 2) + "\"");
  home.Write("PreSetChannelInfo.xml", file);
  db.delete_customer_list(first);
  EXPECT_NE(
      std::string::npos,
      home.Read("PreSetChannelInfo.xml").find("SubArea=\"" + std::to_string(first + 1) + "\""));
  EXPECT_EQ(
      std::string::npos,
      home.Read("PreSetChannelInfo.xml").find(" SubArea=\"" + std::to_string(first + 2) + "\""));
}

TEST(ApiPresets, WhatCannotBeStoredIsRefused) {
  const ApiHome home;
  const std::string before = home.Read("PreSetChannelInfo.xml");
  zortunedex::database db = home.OneSeg();
  ExpectError("is empty", [&] { db.save_customer_list(""); });
  ExpectError("not UTF-8", [&] { db.save_customer_list("\xFF"); });
  ExpectError("no file can hold", [&] { db.save_customer_list("\x02"); });
  ExpectError("more than 259 bytes", [&] { db.save_customer_list(std::string(260, 'a')); });
  db.edit([](zortunedex::channel_list& channels) { channels.clear(); });
  ExpectError("no channels to store", [&] { db.save_customer_list("leer"); });
  EXPECT_EQ(before, home.Read("PreSetChannelInfo.xml"));
}

TEST(ApiPresets, OtherSignalsAndMissingFilesAreErrors) {
  const ApiHome home;
  ExpectError("not for DVBSatellite", [&] { home.Satellite().presets(); });
  ExpectError("not for DVBSatellite", [&] { home.Satellite().select_preset(0, 0); });
  zortunedex::database db = home.OneSeg();
  home.Write("PreSetChannelInfo.xml", "<");
  ExpectError("not well-formed", [&] { db.presets(); });
  home.Write("PreSetChannelInfo.xml", "<CHANNELTABLE/>");
  ExpectError("holds no presets", [&] { db.presets(); });
  std::filesystem::remove(home.Path() / "PreSetChannelInfo.xml");
  const auto raised = ExpectError("no such file", [&] { db.presets(); });
  EXPECT_NE(std::string::npos, raised.where().find("PreSetChannelInfo.xml"));
}

}  // namespace

// What a channel takes, and what it refuses.
#include "api/api_home.h"
#include "support/code_page.h"

using zortunedex::channel;
using zortunedex::channel_list;

namespace {

channel Fresh(const ApiHome& home, zortunedex::signal kind) {
  return home.Open(49, kind).new_channel();
}

TEST(ApiFields, NumbersKeepToTheirField) {
  const ApiHome home;
  channel analog = Fresh(home, zortunedex::signal::analog_cable);
  analog.set<"CNI0">(65535).set<"vbiSrvFlag">(-1);
  EXPECT_EQ(65535, analog.get<"CNI0">());
  EXPECT_EQ(-1, analog.get<"vbiSrvFlag">());
  const auto raised = ExpectError("out of range", [&] { analog.set<"CNI0">(65536); });
  EXPECT_EQ(E_INVALIDARG, raised.result());
  EXPECT_EQ("set CNI0 of", raised.operation());
  ExpectError("out of range", [&] { analog.set<"CNI0">(-1); });
  EXPECT_EQ(65535, analog.get<"CNI0">());
  channel dvb = Fresh(home, zortunedex::signal::dvb_satellite);
  dvb.set<"serviceID">(4294967295U);
  EXPECT_EQ(-1, dvb.get<"serviceID">());
  dvb.set<"TSID">(-2147483647 - 1).set<"freq">(4294967295U);
  EXPECT_EQ(4294967295, dvb.get<"freq">());
  ExpectError("out of range", [&] { dvb.set<"serviceID">(4294967296); });
  ExpectError("out of range", [&] { dvb.set<"serviceID">(18446744073709551615ULL); });
  ExpectError("out of range", [&] { dvb.set<"lock">(2); });
  EXPECT_EQ(-1, dvb.get<"serviceID">());
}

TEST(ApiFields, TextsAreRefusedWhereTheyEnter) {
  const ApiHome home;
  channel c = Fresh(home, zortunedex::signal::dvb_satellite);
  c.set<"networkName">("ASTRA 1").set_display_name("Zuhause");
  for (const char* bad :
       {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "a\x80"}) {
    ExpectError("not UTF-8", [&] { c.set<"networkName">(bad); });
    ExpectError("not UTF-8", [&] { c.set_display_name(bad); });
  }
  for (const std::string_view bad :
       {std::string_view("a\0b", 3), std::string_view("\x01"), std::string_view("\xEF\xBF\xBF")}) {
    ExpectError("no file can hold", [&] { c.set<"networkName">(bad); });
  }
  c.set<"networkName">(std::string(255, 'n'));
  ExpectError("more than 255 bytes", [&] { c.set<"networkName">(std::string(256, 'n')); });
  ExpectError("more than 259 bytes", [&] { c.set_display_name(std::string(260, 'n')); });
  ExpectError("more than 255 bytes", [&] { c.set<"networkName">(std::string(5000, 'n')); });
  EXPECT_EQ(std::string(255, 'n'), c.get<"networkName">());
  EXPECT_EQ("Zuhause", c.display_name());
}

TEST(ApiFields, WhatNobodySetsIsRefused) {
  const ApiHome home;
  channel tdmb = Fresh(home, zortunedex::signal::tdmb);
  ExpectError("does not keep", [&] { tdmb.set<"videoStream">(1); });
  ExpectError("does not keep", [&] { tdmb.set_streams<"AudioStream">({{1, 2, 3}}); });
  ExpectError("numbers its channels", [&] { tdmb.set("index", std::int64_t{5}); });
  ExpectError("follows from", [&] { tdmb.set("numOfComponents", std::int64_t{5}); });
  ExpectError("it is a text", [&] { tdmb.set("name", std::int64_t{5}); });
  ExpectError("it is a number", [&] { tdmb.set("freq", std::string("5")); });
  ExpectError("have none", [&] { Fresh(home, zortunedex::signal::fm_radio).set_number(3); });
}

TEST(ApiFields, StreamsKeepToTheirRoom) {
  const ApiHome home;
  channel c = Fresh(home, zortunedex::signal::dvb_satellite);
  const std::vector<zortunedex::stream> full(16, {255, 65535, 4095});
  c.set_streams<"AudioStream">(full);
  EXPECT_EQ(full, c.streams<"AudioStream">());
  EXPECT_EQ(16, c.get<"numOfAudioStreams">());
  ExpectError("too many", [&] { c.set_streams<"AudioStream">({17, zortunedex::stream{}}); });
  ExpectError("pid is out of range", [&] { c.set_streams<"AudioStream">({{1, 65536, 0}}); });
  ExpectError("lang is out of range", [&] { c.set_streams<"AudioStream">({{1, 1, 4096}}); });
  EXPECT_EQ(full, c.streams<"AudioStream">());
  c.set_streams<"AudioStream">({{3, 101, 0}});
  EXPECT_EQ(1U, c.streams<"AudioStream">().size());
  const zortunedex::data_stream data = {{11, 700, 0}, 1, 2, 3, 4, 5, 6, 7, 8, -9};
  c.set_streams<"DsmccStream">({data});
  EXPECT_EQ(std::vector<zortunedex::data_stream>{data}, c.streams<"DsmccStream">());
}

TEST(ApiFields, ComponentsKeepToTheirRoom) {
  const ApiHome home;
  channel c = Fresh(home, zortunedex::signal::tdmb);
  const std::vector<zortunedex::component> values = {{"Ton", 1}, {"Bilder!", -2}};
  c.set_components(values);
  EXPECT_EQ(values, c.components());
  ExpectError("more than 7 bytes", [&] { c.set_components({{"12345678", 0}}); });
  ExpectError("too many", [&] { c.set_components({9, zortunedex::component{}}); });
  ExpectError("type is out of range", [&] { c.set_components({{"a", 4294967296}}); });
  EXPECT_EQ(values, c.components());
}

TEST(ApiFields, ANewChannelHasNothingSet) {
  const ApiHome home;
  const channel c = Fresh(home, zortunedex::signal::dvb_satellite);
  EXPECT_EQ(BDA_POLARISATION_NOT_SET, c.get<"polarisation">());
  EXPECT_EQ(0U, c.index());
  EXPECT_EQ("", c.name());
  EXPECT_FALSE(c.favorite());
  EXPECT_FALSE(c.locked());
}

// Every field of every kind takes a value, and the file gives it back in both forms.
TEST(ApiFields, EveryFieldOfEveryKindComesBack) {
  const ApiHome home(false);
  for (const zortunedex::named_signal& known : zortunedex::signals) {
    for (const auto form : {zortunedex::file_form::xml, zortunedex::file_form::preformatted}) {
      zortunedex::database db = home.Open(49, known.value);
      channel meant = db.new_channel();
      std::int64_t number = 0;
      for (const std::string_view field : meant.fields()) {
        const auto* row = zortunedex::detail::FindRow(
            *station_blocks::Find(static_cast<InputSignalType>(known.value)), field);
        const bool isSettable = row->use == station_blocks::Use::Both && field != "index" &&
                                !field.starts_with("numOf");
        if (!isSettable) continue;
        if (std::holds_alternative<std::string>(meant.get(field))) {
          meant.set(field, "a text " + std::to_string(++number));
        } else {
          meant.set(field, std::int64_t{1});
        }
      }
      db.edit([&](channel_list& list) { list.clear(), list.add(meant); }, form);
      const channel found = home.Open(49, known.value).channels().at_index(1);
      for (const std::string_view field : meant.fields()) {
        if (field == "index" || field == "Component_index") continue;
        EXPECT_EQ(meant.get(field), found.get(field)) << known.name << ' ' << field;
      }
    }
  }
}

struct ApiWestern : InCodePage<1252> {};

TEST_F(ApiWestern, TextsOutOfTheCodePageAreRefused) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  db.edit([](channel_list& list) {
    list.at_index(1).set<"networkName">("Büro").set_display_name("Straße");
    ExpectError("outside the code page", [&] { list.at_index(1).set<"networkName">("日本"); });
    ExpectError("outside the code page", [&] { list.at_index(1).set_display_name("日本"); });
  });
  EXPECT_EQ("Büro", db.channels().at_index(1).get<"networkName">());
  EXPECT_EQ("Straße", db.channels().at_index(1).display_name());
  EXPECT_EQ(4U,
            zortunedex::detail::UpToZero(
                zortunedex::detail::Inside::Of(db.channels().at_index(1)).block.data() + 352, 256)
                .size());
}

struct ApiJapanese : InCodePage<932> {};

// Their bytes are of another code page, and would become others.
TEST_F(ApiJapanese, NamesThatAreNoTextAreNotWrittenOver) {
  const ApiHome home;
  const std::string before = home.Read("ChanInfo.xml");
  ASSERT_FALSE(HoldsJapaneseNames(home));
  zortunedex::database db = home.OneSeg();
  ExpectError("name of channel 1",
              [&] { db.edit([](channel_list& list) { list.at_index(2).set_favorite(); }); });
  EXPECT_EQ(before, home.Read("ChanInfo.xml"));
  db.edit([](channel_list& list) {
    int number = 0;
    for (channel& c : list) {
      const std::string name = "放送" + std::to_string(++number);
      c.set_name(name).set_display_name(name);
    }
  });
  EXPECT_EQ("放送1", db.channels().at_index(1).name());
}

}  // namespace

// Satellites, LNB types and dishes.
#include "api/api_home.h"
#include "support/code_page.h"

using zortunedex::band;
using zortunedex::dish_list;
using zortunedex::dish_satellite;

namespace {

template <typename List>
auto Named(const List& list, const std::string& id, std::string List::value_type::*key) {
  for (const auto& entry : list) {
    if (entry.*key == id) return entry;
  }
  throw std::runtime_error("no " + id);
}

TEST(ApiSatellites, TheCatalogueIsRead) {
  const ApiHome home;
  // Whatever signal the database is for.
  const zortunedex::database db = home.Open(49, zortunedex::signal::fm_radio);
  const std::vector<zortunedex::satellite> satellites = db.satellites();
  const auto thaicom = Named(satellites, "Thaicom-6-78.5E", &zortunedex::satellite::id);
  EXPECT_EQ("Thaicom 6 78.5E", thaicom.name);
  EXPECT_EQ(785, thaicom.longitude);
  EXPECT_EQ(-1, thaicom.azimuth);
  EXPECT_EQ(RegionAsia, thaicom.region);
  zortunedex::transponder second;
  second.name = "3722 H [YGN test card]";
  second.frequency = 3722000;
  second.polarisation = BDA_POLARISATION_LINEAR_H;
  second.symbol_rate = 2078;
  second.modulation = BDA_MOD_QPSK;
  second.inversion = BDA_SPECTRAL_INVERSION_AUTOMATIC;
  EXPECT_EQ(second, thaicom.c_band.at(1));
  const auto lnb = Named(db.lnbs(), "Universal", &zortunedex::lnb_type::name);
  EXPECT_EQ((zortunedex::lnb_type{"Universal", 9750000, 10600000, 11700000}), lnb);
}

TEST(ApiSatellites, AMissingOrDamagedCatalogueIsAnError) {
  const ApiHome home;
  const zortunedex::database db = home.Satellite();
  home.Write("SatelliteInfo.xml", "<");
  const auto raised = ExpectError("holds no catalogue", [&] { db.satellites(); });
  EXPECT_NE(std::string::npos, raised.where().find("SatelliteInfo.xml"));
  ExpectError("holds no catalogue", [&] { db.lnbs(); });
  std::filesystem::remove(home.Path() / "SatelliteInfo.xml");
  ExpectError("no such file", [&] { db.satellites(); });
}

// The library loads all of it and answers a failure.
TEST(ApiSatellites, ACatalogueThatEndsWithoutAKuBandIsRead) {
  const ApiHome home;
  home.Write("SatelliteInfo.xml",
             "<SATELLITE_INFO><SAT_TABLE><Satellite id=\"A\" name=\"a\" index=\"0\">"
             "<C-Band/><Ku-Band/></Satellite><Satellite id=\"B\" name=\"b\" index=\"1\">"
             "<C-Band/></Satellite></SAT_TABLE><LNB_TABLE/></SATELLITE_INFO>");
  EXPECT_EQ(2U, home.Satellite().satellites().size());
}

TEST(ApiDishes, AssigningAndRemoving) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  const auto satellites = db.satellites();
  const auto lnbs = db.lnbs();
  const auto thaicom = Named(satellites, "Thaicom-6-78.5E", &zortunedex::satellite::id);
  const auto universal = Named(lnbs, "Universal", &zortunedex::lnb_type::name);
  const dish_list before = db.dishes();
  EXPECT_EQ(2U, before.on(1).size());
  db.edit_dishes([&](dish_list& dishes) {
    EXPECT_EQ(1U, dishes.assign(4, thaicom, band::ku, universal));
    EXPECT_EQ(3U, dishes.assign(1, {"Eigen", "Ku-Band", 1, 2, 3}));
  });
  EXPECT_EQ((dish_satellite{"Thaicom-6-78.5E", "Ku-Band", 9750000, 10600000, 11700000}),
            db.dishes().on(4).front());
  db.edit_dishes([&](dish_list& dishes) {
    // What is there already gets the new frequencies.
    EXPECT_EQ(1U, dishes.assign(4, {"Thaicom-6-78.5E", "Ku-Band", 5, 6, 7}));
    dishes.remove(1, 3);
    dishes.clear(2);
  });
  const dish_list after = home.Satellite().dishes();
  EXPECT_EQ(before.on(1), after.on(1));
  EXPECT_TRUE(after.on(2).empty());
  ASSERT_EQ(1U, after.on(4).size());
  EXPECT_EQ(5U, after.on(4).front().low);
}

TEST(ApiDishes, WhatATemporaryAnswersMayBeKept) {
  const ApiHome home;
  const auto& kept = home.Satellite().dishes().on(1);
  EXPECT_EQ(2U, kept.size());
  const auto& lists = home.OneSeg().presets().customer_lists();
  EXPECT_FALSE(lists.front().name.empty());
  const auto& list = home.OneSeg().presets().list(0, 0);
  EXPECT_FALSE(list.name.empty());
  const auto& area = home.OneSeg().presets().area(0);
  EXPECT_FALSE(area.name.empty());
}

TEST(ApiDishes, WhatIsNotThereIsAnError) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  const std::string before = home.Read("UserSettings.xml");
  for (const unsigned dish : {0U, 5U}) {
    ExpectError("dishes are 1 to 4", [&] { db.dishes().on(dish); });
    ExpectError("dishes are 1 to 4", [&] {
      db.edit_dishes([&](dish_list& dishes) { dishes.assign(dish, {"a", "b", 1, 2, 3}); });
    });
  }
  ExpectError("none at that place",
              [&] { db.edit_dishes([](dish_list& dishes) { dishes.remove(1, 3); }); });
  ExpectError("not UTF-8", [&] {
    db.edit_dishes([](dish_list& dishes) { dishes.assign(1, {"\xFF", "b", 1, 2, 3}); });
  });
  ExpectError("is empty", [&] {
    db.edit_dishes([](dish_list& dishes) { dishes.assign(1, {"", "b", 1, 2, 3}); });
  });
  EXPECT_EQ(before, home.Read("UserSettings.xml"));
}

TEST(ApiDishes, AFileThatCannotHoldThemStays) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  const std::string one =
      "<USER_SETTINGS><SAT_SETTING><DISH_1/><DISH_2/></SAT_SETTING></USER_SETTINGS>";
  home.Write("UserSettings.xml", one);
  const auto assign = [&](unsigned dish, const std::string& id) {
    db.edit_dishes([&](dish_list& dishes) { dishes.assign(dish, {id, "C-Band", 1, 2, 3}); });
  };
  ExpectError("no element for a dish", [&] { assign(3, "a"); });
  ExpectError("would not hold", [&] { assign(1, std::string(300, 'a')); });
  EXPECT_EQ(one, home.Read("UserSettings.xml"));
  home.Write("UserSettings.xml", "<USER_SETTINGS>");
  ExpectError("not well-formed", [&] { db.dishes(); });
  ExpectError("not well-formed", [&] { assign(1, "a"); });
  EXPECT_EQ("<USER_SETTINGS>", home.Read("UserSettings.xml"));
  std::filesystem::remove(home.Path() / "UserSettings.xml");
  EXPECT_EQ(dish_list(), db.dishes());
  assign(1, "a");
  EXPECT_EQ("a", db.dishes().on(1).front().id);
}

/// Settings with one satellite on each of the first two dishes.
std::string TwoDishes(const std::string& first) {
  const std::string rest = "\" band=\"C-Band\" LNB_Low=\"1\" LNB_High=\"2\" LNB_Switch=\"3\"/>";
  return "<USER_SETTINGS><SAT_SETTING><DISH_1><SAT id=\"" + first + rest +
         "</DISH_1><DISH_2><SAT id=\"b" + rest +
         "</DISH_2><DISH_3/><DISH_4/></SAT_SETTING></USER_SETTINGS>";
}

void ExpectKeptUnlessTakenAway(const ApiHome& home, const std::string& id) {
  home.Write("UserSettings.xml", TwoDishes(id));
  zortunedex::database db = home.Satellite();
  ExpectError("to be kept", [&] { db.edit_dishes([](dish_list& dishes) { dishes.clear(2); }); });
  ExpectError("to be kept", [&] {
    db.edit_dishes([](dish_list& dishes) { dishes.assign(3, {"c", "C-Band", 1, 2, 3}); });
  });
  EXPECT_EQ(TwoDishes(id), home.Read("UserSettings.xml"));
  db.edit_dishes([](dish_list& dishes) { dishes.clear(1); });
  EXPECT_TRUE(db.dishes().on(1).empty());
  EXPECT_EQ("b", db.dishes().on(2).front().id);
}

TEST(ApiDishes, ATextThatMayHaveBeenCutIsNotWrittenShort) {
  const ApiHome home;
  ExpectKeptUnlessTakenAway(home, std::string(280, 'x'));
}

struct ApiWesternDishes : InCodePage<1252> {};

TEST_F(ApiWesternDishes, ATextOutOfTheCodePageIsNotWrittenAsAnother) {
  const ApiHome home;
  ExpectKeptUnlessTakenAway(home, "日本");
}

}  // namespace

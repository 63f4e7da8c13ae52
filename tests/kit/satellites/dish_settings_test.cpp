#include "kit/satellites/dish_settings.h"

#include "kit/failure.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

TEST(DishSettings, AreReadByDish) {
  const Home home;
  const Dishes dishes = ReadDishes(home.Satellites());
  ASSERT_EQ(2U, dishes.on(1).size());
  ASSERT_EQ(1U, dishes.on(2).size());
  EXPECT_TRUE(dishes.on(3).empty());
  const DishSatellite thaicom{"Thaicom-6-78.5E", "C-Band", 5150000, 5150000, 0};
  EXPECT_EQ(thaicom, dishes.on(2)[0]);
}

TEST(DishSettings, AreSavedAndReadBack) {
  const Home home;
  Dishes dishes = ReadDishes(home.Satellites());
  for (const DishSatellite& satellite : dishes.on(1)) dishes.assign(4, satellite);
  dishes.clear(1);
  EXPECT_EQ(dishes, SaveDishes(home.Satellites(), dishes, {}));
  EXPECT_EQ(dishes, ReadDishes(home.Satellites()));
}

TEST(DishSettings, KeepOnceWhatIsThereTwiceAndSaySo) {
  const Home home;
  home.Files().Write("UserSettings.xml",
                     "<USER_SETTINGS><SAT_SETTING><DISH_2><SAT id='A' index='0'/>"
                     "<SAT id='A' index='1'/></DISH_2></SAT_SETTING></USER_SETTINGS>");
  const Dishes dishes = ReadDishes(home.Satellites());
  ASSERT_EQ(2U, dishes.on(2).size());
  std::vector<std::string> notes;
  const Dishes saved =
      SaveDishes(home.Satellites(), dishes,
                 {{}, [&notes](const std::string& note) { notes.push_back(note); }});
  EXPECT_EQ(std::vector<std::string>{"dish 2 had an assignment more than once; it is kept once"},
            notes);
  EXPECT_EQ(1U, saved.on(2).size());
  EXPECT_EQ(saved, ReadDishes(home.Satellites()));
}

TEST(DishSettings, StayWhereTheyCannotBeHeld) {
  const Home home;
  home.Files().Write("UserSettings.xml",
                     "<USER_SETTINGS><SAT_SETTING><DISH_1/></SAT_SETTING></USER_SETTINGS>");
  const std::string before = home.Files().Read("UserSettings.xml");
  Dishes dishes;
  dishes.assign(2, {"Astra", "Ku-Band", 9750000, 10600000, 11700000});
  ExpectRaised<Failure>(
      "UserSettings.xml has no DISH_2 element: it cannot hold satellites of dish 2. It was left as "
      "it was",
      [&] { SaveDishes(home.Satellites(), dishes, {}); });
  EXPECT_EQ(before, home.Files().Read("UserSettings.xml"));
}

}  // namespace

}  // namespace zortunedex::kit

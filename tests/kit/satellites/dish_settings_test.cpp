#include "kit/satellites/dish_settings.h"

#include "kit/failure.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

TEST(DishSettings, AreReadByDish) {
  const Home home;
  const Dishes dishes = ReadDishes(home.Satellites());
  ASSERT_EQ(2U, dishes[0].size());
  ASSERT_EQ(1U, dishes[1].size());
  EXPECT_TRUE(dishes[2].empty());
  const DishSatellite thaicom{Wide("Thaicom-6-78.5E"), Wide("C-Band"), 5150000, 5150000, 0};
  EXPECT_EQ(thaicom, dishes[1][0]);
}

TEST(DishSettings, AreSavedAndReadBack) {
  const Home home;
  Dishes dishes = ReadDishes(home.Satellites());
  dishes[3] = dishes[0];
  dishes[0].clear();
  EXPECT_EQ(dishes, SaveDishes(home.Satellites(), dishes, {}));
  EXPECT_EQ(dishes, ReadDishes(home.Satellites()));
}

TEST(DishSettings, KeepOnceWhatIsThereTwiceAndSaySo) {
  const Home home;
  Dishes dishes = ReadDishes(home.Satellites());
  dishes[1].push_back(dishes[1][0]);
  std::vector<std::string> notes;
  const Dishes saved =
      SaveDishes(home.Satellites(), dishes,
                 {{}, [&notes](const std::string& note) { notes.push_back(note); }});
  EXPECT_EQ(std::vector<std::string>{"dish 2 had an assignment more than once; it is kept once"},
            notes);
  EXPECT_EQ(1U, saved[1].size());
  EXPECT_EQ(saved, ReadDishes(home.Satellites()));
}

TEST(DishSettings, StayWhereTheyCannotBeHeld) {
  const Home home;
  home.Files().Write("UserSettings.xml",
                     "<USER_SETTINGS><SAT_SETTING><DISH_1/></SAT_SETTING></USER_SETTINGS>");
  const std::string before = home.Files().Read("UserSettings.xml");
  Dishes dishes;
  dishes[1].push_back({Wide("Astra"), Wide("Ku-Band"), 9750000, 10600000, 11700000});
  ExpectRaised<Failure>(
      "UserSettings.xml has no DISH_2 element: it cannot hold satellites of dish 2. It was left as "
      "it was",
      [&] { SaveDishes(home.Satellites(), dishes, {}); });
  EXPECT_EQ(before, home.Files().Read("UserSettings.xml"));
}

}  // namespace

}  // namespace zortunedex::kit

// UserSettings.xml as Linux writes it, byte for byte.
//
// Linux only: MSXML writes other bytes, and Wine others again
#include <fstream>
#include <iterator>

#include "contract/catalogue.h"

namespace {

std::string Golden(const std::string& name) {
  std::ifstream file(ZORTUNEDEX_TEST_DATA "/settings/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

TEST(SettingsBytes, Skeleton) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
  ExpectHr(S_OK, database->SaveUserSettingsToFile());
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
      "<USER_SETTINGS><SAT_SETTING><DISH_1/><DISH_2/><DISH_3/><DISH_4/></SAT_SETTING>"
      "</USER_SETTINGS>\r\n",
      directory.Read(kSettingsFile));
}

TEST(SettingsBytes, OneAssignment) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
  Assign(DishesOf(database), 0, Wide("S\"&<>'").Get());
  ExpectHr(S_OK, database->SaveUserSettingsToFile());
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
      "<USER_SETTINGS><SAT_SETTING><DISH_1><SAT id=\"S&quot;&amp;&lt;>'\" band=\"Ku\" "
      "LNB_Low=\"9750\" LNB_High=\"10600\" LNB_Switch=\"11700\"/></DISH_1><DISH_2/><DISH_3/>"
      "<DISH_4/></SAT_SETTING></USER_SETTINGS>\r\n",
      directory.Read(kSettingsFile));
}

// What was found stays as it is; what was changed and what is new is appended.
TEST(SettingsBytes, BeforeAndAfter) {
  const TempDir directory;
  directory.Write(kSettingsFile, Golden("before.xml"));
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
  const ComPtr<IDishSatInfoMgr> dishes = DishesOf(database);
  ASSERT_EQ(2U, CountOf(dishes, 0));
  ASSERT_EQ(1U, CountOf(dishes, 2));
  ExpectHr(S_OK, AssignmentAt(dishes, 0, 1)->SetSwitchFreq(11800));
  Assign(dishes, 3, Wide("S30.0W").Get(), "C", 5150, 0, 0);
  ExpectHr(S_OK, database->SaveUserSettingsToFile());
  EXPECT_EQ(Golden("after.xml"), directory.Read(kSettingsFile));
}

// After a removal every assignment is written afresh.
TEST(SettingsBytes, AfterARemoval) {
  const TempDir directory;
  directory.Write(kSettingsFile, Golden("before.xml"));
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
  const ComPtr<IDishSatInfoMgr> dishes = DishesOf(database);
  ExpectHr(S_OK, dishes->RemoveDishSatInfo(AssignmentAt(dishes, 0, 0).Get(), 0));
  ExpectHr(S_OK, database->SaveUserSettingsToFile());
  EXPECT_EQ(Golden("after_removal.xml"), directory.Read(kSettingsFile));
}

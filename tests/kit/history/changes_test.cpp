#include "kit/history/comparison/changes.h"

#include "kit/history/comparison/channel_changes.h"
#include "kit/history/comparison/element_changes.h"
#include "kit/history/recorded_home.h"
#include "kit/home.h"
#include "kit/saving/save_table.h"

namespace zortunedex::kit {

namespace {

using history::Change;
using history::FieldChange;
using history::Kind;
using Lines = std::vector<std::string>;

/// "moved 5>1 Name: field from>to"
Lines Described(const std::vector<Change>& changes) {
  Lines lines;
  for (const Change& change : changes) {
    std::string line = history::WordOf(change.kind);
    if (change.channel) {
      line +=
          " " + std::to_string(change.channel->before) + ">" + std::to_string(change.channel->now);
    }
    line += " " + change.what;
    for (const FieldChange& field : change.fields) {
      line += "; " + field.field + " " + field.from + ">" + field.to;
    }
    lines.push_back(line);
  }
  return lines;
}

/// The sample's satellite channels, changed as tables.
class Lists {
 public:
  Lists() { m_table = ReadTable(m_home.At(49, InputSignalDVBSatellite)); }

  std::vector<Channel>& Channels() { return m_table.channels; }
  void Renumber() {
    UINT index = 0;
    for (Channel& channel : m_table.channels) channel.index = ++index;
  }
  void Move(std::size_t from, std::size_t to) {
    const Channel channel = Channels()[from];
    Channels().erase(Channels().begin() + static_cast<std::ptrdiff_t>(from));
    Channels().insert(Channels().begin() + static_cast<std::ptrdiff_t>(to), channel);
    Renumber();
  }

  /// What is told once this is saved.
  Lines Told() {
    const std::string before = m_home.Channels();
    SaveTable(m_home.Path(), m_table);
    return Described(history::ChannelChanges(before, m_home.Channels()));
  }

 private:
  Home m_home;
  ChannelTable m_table;
};

TEST(ChannelChanges, TellNothingOfTheSame) {
  Lists lists;
  EXPECT_EQ(Lines{}, lists.Told());
}

TEST(ChannelChanges, TellWhatCameAndWent) {
  Lists lists;
  Channel added = lists.Channels()[2];
  added.displayName = Wide("Another");
  added.block[0] = 77;
  added.frequency = 1;
  lists.Channels().erase(lists.Channels().begin() + 1);
  lists.Channels().push_back(added);
  lists.Renumber();
  const std::string last = std::to_string(lists.Channels().size());
  EXPECT_EQ((Lines{"removed 2>0 ZDF HD", "added 0>" + last + " Another"}), lists.Told())
      << "what is numbered afresh has not moved";
}

TEST(ChannelChanges, TellWhatMoved) {
  Lists lists;
  lists.Move(4, 0);
  EXPECT_EQ(Lines{"moved 5>1 ProSieben"}, lists.Told());
  lists.Move(0, 7);
  EXPECT_EQ(Lines{"moved 1>8 ProSieben"}, lists.Told());
}

TEST(ChannelChanges, TellNewNames) {
  Lists lists;
  lists.Channels()[4].displayName = Wide("Mine");
  EXPECT_EQ(Lines{"renamed 5>5 Mine; displayName ProSieben>Mine"}, lists.Told());
}

TEST(ChannelChanges, TellWhatFieldsWereAndAre) {
  Lists lists;
  lists.Channels()[4].favorite = 7;
  lists.Channels()[4].lock = 1;
  lists.Channels()[5].frequency += 1;
  const std::vector<std::string> told = lists.Told();
  ASSERT_EQ(2U, told.size());
  EXPECT_EQ("changed 5>5 ProSieben; favorite 1>7; lock false>true", told[0]);
  EXPECT_TRUE(told[1].starts_with("changed 6>6 ")) << told[1];
  EXPECT_NE(std::string::npos, told[1].find("; frequency ")) << told[1];
}

TEST(ChannelChanges, FollowAChannelThroughSeveral) {
  Lists lists;
  lists.Channels()[4].displayName = Wide("Mine");
  lists.Channels()[4].favorite = 9;
  lists.Move(4, 0);
  lists.Channels().erase(lists.Channels().begin() + 3);
  lists.Renumber();
  EXPECT_EQ(
      (Lines{"removed 3>0 RTL Television", "moved 5>1 Mine",
             "renamed 5>1 Mine; displayName ProSieben>Mine", "changed 5>1 Mine; favorite 1>9"}),
      lists.Told());
}

TEST(ChannelChanges, OfAnUnreadableFileAreNone) {
  const Home home;
  EXPECT_TRUE(history::ChannelChanges(home.Channels(), home.Channels() + "<").empty());
  EXPECT_FALSE(history::ChannelChanges(home.Channels(), "").empty());
}

TEST(OutOfOrder, LeavesALongestAscendingRow) {
  using Flags = std::vector<bool>;
  EXPECT_EQ((Flags{}), history::OutOfOrder({}));
  EXPECT_EQ((Flags{false, false, false}), history::OutOfOrder({0, 1, 2}));
  EXPECT_EQ((Flags{true, false, false, false}), history::OutOfOrder({3, 0, 1, 2}));
  EXPECT_EQ((Flags{false, false, false, true}), history::OutOfOrder({1, 2, 3, 0}));
  EXPECT_EQ((Flags{false, false, false}), history::OutOfOrder({-1, 0, -1}));
  EXPECT_EQ((Flags{true, true, false}), history::OutOfOrder({2, 1, 0}));
}

constexpr char kSettings[] =
    "<USER_SETTINGS><SAT_SETTING><DISH_1><SAT id='Astra' band='Ku' LNB_Low='9750'/>"
    "<SAT id='Hotbird' band='Ku'/></DISH_1><DISH_2/></SAT_SETTING></USER_SETTINGS>";

TEST(ElementChanges, SpeakOfDishesAndSatellites) {
  EXPECT_EQ((Lines{"removed dish 1, satellite Hotbird Ku", "added dish 2, satellite Thaicom C",
                   "changed dish 1, satellite Astra Ku; LNB_Low 9750>9751"}),
            Described(history::ElementChanges(
                kSettings,
                "<USER_SETTINGS><SAT_SETTING><DISH_1><SAT id='Astra' band='Ku' LNB_Low='9751'/>"
                "</DISH_1><DISH_2><SAT id='Thaicom' band='C'/></DISH_2></SAT_SETTING>"
                "</USER_SETTINGS>")));
  EXPECT_EQ(Lines{}, Described(history::ElementChanges(kSettings, kSettings)));
}

TEST(ElementChanges, TellTheOutermostOfWhatCame) {
  const std::string before = "<S><SAT_TABLE/><LNB_TABLE/></S>";
  const std::string now =
      "<S><SAT_TABLE><Satellite id='A'><C-Band/><Ku-Band><Transponder name='1'/></Ku-Band>"
      "</Satellite></SAT_TABLE><LNB_TABLE><LNB type='U'/></LNB_TABLE></S>";
  EXPECT_EQ((Lines{"added S, satellite A", "added S, LNB type U"}),
            Described(history::ElementChanges(before, now)));
  EXPECT_EQ((Lines{"removed S, satellite A", "removed S, LNB type U"}),
            Described(history::ElementChanges(now, before)));
}

TEST(ElementChanges, CountEqualOnes) {
  EXPECT_EQ(Lines{"added dish 1, satellite A (2)"},
            Described(history::ElementChanges("<DISH_1><SAT id='A'/></DISH_1>",
                                              "<DISH_1><SAT id='A'/><SAT id='A'/></DISH_1>")));
}

TEST(AllChanges, NameFilesThatCameWentOrDifferInFormAlone) {
  history::FileSet before = {{"ChanInfo.xml", std::nullopt}, {"UserSettings.xml", kSettings}};
  history::FileSet now = before;
  EXPECT_EQ(Lines{}, Described(history::ChangesBetween(before, now)));
  now["UserSettings.xml"] = std::string(kSettings) + "\n";
  EXPECT_EQ(Lines{"changed "}, Described(history::ChangesBetween(before, now)));
  now["UserSettings.xml"] = std::nullopt;
  EXPECT_EQ("removed ", Described(history::ChangesBetween(before, now)).front());
  EXPECT_EQ("added ", Described(history::ChangesBetween(now, before)).front());
}

}  // namespace

}  // namespace zortunedex::kit

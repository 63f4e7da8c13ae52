#include "kit/saving/list_editor.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/saving/inventory.h"
#include "kit/saving/save_table.h"

namespace zortunedex::kit {

namespace {

class ListEditors : public testing::Test {
 protected:
  Location At() const { return m_home.At(49, InputSignalDVBSatellite); }
  std::vector<Channel> Saved() const { return ChannelList(At()).Channels(); }
  static std::vector<WideText> NamesOf(const std::vector<Channel>& channels) {
    std::vector<WideText> names;
    for (const Channel& channel : channels) names.push_back(channel.name);
    return names;
  }

  const Home m_home;
};

// Whatever was done before, the list is what one save after the other would have made of it.
TEST_F(ListEditors, ShowTheListAsItStands) {
  const std::vector<WideText> before = NamesOf(Saved());
  ASSERT_LT(5U, before.size());
  ListEditor editor(At(), {});
  Channel channel = editor.Find(2);
  channel.favorite = 77;
  editor.Put(channel);
  EXPECT_EQ(77U, editor.Now()[1].favorite);
  editor.Remove({1, 3});
  EXPECT_EQ(77U, editor.Find(1).favorite);
  EXPECT_EQ(before[3], editor.Find(2).name);
  editor.Move(2, 1);
  EXPECT_EQ(77U, editor.Find(2).favorite);
  channel = editor.Find(1);
  channel.lock = 1;
  EXPECT_EQ(before.size() - 1, editor.Add(channel));
  EXPECT_EQ(before[3], editor.Now().back().name);
  const std::vector<Channel> now = editor.Now();
  editor.Save();
  EXPECT_TRUE(SameChannels(now, editor.After()));
  EXPECT_TRUE(SameChannels(now, Saved()));
}

TEST_F(ListEditors, RemoveManyAsOneAfterTheOther) {
  const Home other;
  const Location there = other.At(49, InputSignalDVBSatellite);
  ListEditor editor(At(), {});
  editor.Remove({2, 3, 5});
  editor.Save();
  for (const UINT index : {5U, 3U, 2U}) {
    ListEditor single(there, {});
    single.Remove({index});
    single.Save();
  }
  EXPECT_EQ(other.Channels(), m_home.Channels());
}

TEST_F(ListEditors, RemoveAllOrNone) {
  ListEditor editor(At(), {});
  const std::size_t count = editor.Now().size();
  ExpectRaised<Failure>("no channel with index 4000", [&] { editor.Remove({1, 4000}); });
  EXPECT_EQ(count, editor.Now().size());
  std::vector<UINT> all;
  for (const Channel& channel : editor.Now()) all.push_back(channel.index);
  editor.Remove(all);
  EXPECT_TRUE(editor.Now().empty());
  editor.Save();
  EXPECT_TRUE(Saved().empty());
}

TEST_F(ListEditors, ChangesThatComeToNothingWriteNothing) {
  const std::string before = m_home.Channels();
  ListEditor editor(At(), {});
  editor.Move(5, 1);
  editor.Move(1, 5);
  const UINT added = editor.Add(editor.Find(1));
  editor.Remove({added});
  editor.Save();
  EXPECT_EQ(before, m_home.Channels());
}

TEST_F(ListEditors, TakeAChangeBackAfterItWasSaved) {
  const std::vector<Channel> before = Saved();
  ListEditor editor(At(), {});
  Channel channel = editor.Find(2);
  channel.favorite = 77;
  editor.Put(channel);
  editor.Save();
  EXPECT_EQ(77U, Saved()[1].favorite);
  editor.Put(before[1]);
  editor.Save();
  EXPECT_TRUE(SameChannels(before, Saved()));
}

TEST_F(ListEditors, ReplaceWhatStandsThereAndNotWhatDid) {
  const std::vector<Channel> before = Saved();
  ListEditor editor(At(), {});
  Channel channel = editor.Find(2);
  channel.favorite = 77;
  editor.Put(channel);
  editor.Replace(before);
  EXPECT_TRUE(SameChannels(before, editor.Now()));
  editor.Move(3, 1);
  editor.Replace(before);
  EXPECT_TRUE(SameChannels(before, editor.Now()));
}

class ListsOfTheirOwn : public testing::Test {
 protected:
  Location At() const { return m_home.At(49, InputSignalDVBSatellite); }

  /// A file with these indexes alone.
  void Write(const std::vector<UINT>& indexes) const {
    const Home samples;
    ChannelTable table = ReadTable(samples.At(49, InputSignalDVBSatellite));
    table.channels.resize(indexes.size());
    for (std::size_t i = 0; i < indexes.size(); ++i) table.channels[i].index = indexes[i];
    SaveTable(m_home.Path(), table);
  }
  void Change(const std::string& from, const std::string& to) const {
    std::string bytes = m_home.Channels();
    const std::size_t place = bytes.find(from);
    ASSERT_NE(std::string::npos, place);
    m_home.Files().Write("ChanInfo.xml", bytes.replace(place, from.size(), to));
  }

  const Home m_home{Home::Start::Empty};
};

// It cannot be found but by its index, which nothing tells while it stands alone.
TEST_F(ListsOfTheirOwn, ChangeASingleChannelWhereItStands) {
  Write({7});
  Change(" nameDisplay=", " note=\"kept\" nameDisplay=");
  ListEditor editor(At(), {});
  Channel channel = editor.Find(7);
  channel.favorite = 5;
  editor.Put(channel);
  editor.Save();
  EXPECT_EQ(5U, editor.After(7).favorite);
  const ChannelTable saved = ReadTable(At());
  ASSERT_EQ(1U, saved.channels.size());
  EXPECT_EQ(7U, saved.channels[0].index);
  EXPECT_EQ(5U, saved.channels[0].favorite);
  EXPECT_NE(std::string::npos, m_home.Channels().find(" note=\"kept\""));
}

TEST_F(ListsOfTheirOwn, SortChannelsThatHaveOneIndex) {
  Write({1, 2, 3});
  Change(" index=\"3\"", " index=\"2\"");
  ListEditor editor(At(), {});
  const std::string message = "two channels have index 2 and would become one; sort the list first";
  ExpectRaised<Failure>(message, [&] { editor.Now(); });
  ExpectRaised<Failure>(message, [&] { editor.Save(); });
  editor.Sort(SortChannelByNo, true);
  editor.Save();
  const std::vector<Channel> saved = ReadTable(At()).channels;
  ASSERT_EQ(3U, saved.size());
  for (UINT i = 0; i < 3; ++i) EXPECT_EQ(i + 1, saved[i].index);
}

}  // namespace

}  // namespace zortunedex::kit

#include "kit/saving/list_editor.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/saving/inventory.h"

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

}  // namespace

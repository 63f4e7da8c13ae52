// What the library does not know of a channel, an attribute or an element of another program, never
// comes to another channel: it stays where its channel stays, and goes where channels are numbered.
#include "kit/home.h"
#include "kit/saving/list_editor.h"
#include "kit/saving/save_table.h"

namespace zortunedex::kit {

namespace {

/// Saves in one of the two forms; the first satellite channel has parts of another program's.
class ForeignParts : public testing::TestWithParam<EStorageType> {
 protected:
  ForeignParts() {
    std::string bytes = m_home.Channels();
    const std::size_t first = bytes.find("<Channel ", bytes.find("inputSignalType=\"64\""));
    bytes.insert(bytes.find("</Channel>", first), "<Own/>");
    bytes.insert(bytes.find(' ', first), " note=\"mine\"");
    m_home.Files().Write("ChanInfo.xml", bytes);
    EXPECT_TRUE(HasAny());
  }

  Location At() const { return m_home.At(49, InputSignalDVBSatellite); }
  ChannelTable Table() const { return ReadTable(At()); }
  SaveOptions InForm() const { return {GetParam(), {}}; }
  void Save(ChannelTable table) const {
    for (UINT i = 0; i < table.channels.size(); ++i) table.channels[i].index = i + 1;
    SaveTable(m_home.Path(), table, InForm());
  }
  template <typename Change>
  void Edit(Change change) const {
    ListEditor editor(At(), InForm());
    change(editor);
    editor.Save();
  }
  bool HasAny() const {
    const std::string bytes = m_home.Channels();
    return bytes.find("note=\"mine\"") != std::string::npos ||
           bytes.find("<Own") != std::string::npos;
  }

 private:
  const Home m_home;
};

INSTANTIATE_TEST_SUITE_P(Forms, ForeignParts, testing::Values(StorageXML, StoragePreFmtXML));

TEST_P(ForeignParts, StayWithTheChannelThatStays) {
  ChannelTable table = Table();
  table.channels[0].lock = 1;
  table.channels[0].displayName = Wide("Renamed");
  table.channels[2].frequency += 1;
  Save(table);
  EXPECT_TRUE(Table().channels[0].lock);
  EXPECT_TRUE(HasAny());
}

TEST_P(ForeignParts, GoWhereChannelsAreExchanged) {
  ChannelTable table = Table();
  const WideText second = table.channels[1].name;
  std::swap(table.channels[0], table.channels[1]);
  table.channels[0].lock = 1;
  Save(table);
  EXPECT_EQ(second, Table().channels[0].name);
  EXPECT_FALSE(HasAny());
}

TEST_P(ForeignParts, GoWhereAnotherChannelComesInTheirPlace) {
  ChannelTable table = Table();
  table.channels[0] = table.channels[1];
  table.channels[0].displayName = Wide("Other");
  table.channels[0].frequency += 1;
  Save(table);
  EXPECT_EQ(Wide("Other"), Table().channels[0].displayName);
  EXPECT_FALSE(HasAny());
}

TEST_P(ForeignParts, GoWhereAChannelIsMoved) {
  Edit([](ListEditor& editor) { editor.Move(7, 3); });
  EXPECT_FALSE(HasAny());
}

TEST_P(ForeignParts, GoWhereTheListIsSorted) {
  Edit([](ListEditor& editor) { editor.Sort(SortChannelByNo, false); });
  EXPECT_FALSE(HasAny());
}

}  // namespace

}  // namespace zortunedex::kit

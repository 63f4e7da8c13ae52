// Changes of the channel list: saved whole or not at all.
#include <stdexcept>

#include "api/api_home.h"

using zortunedex::channel;
using zortunedex::channel_list;

namespace {

std::vector<std::string> Names(const zortunedex::channel_view& channels) {
  std::vector<std::string> names;
  for (const channel& c : channels) names.push_back(c.name());
  return names;
}

TEST(ApiEdit, ChangesAreThereAfterwards) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  const std::string seventh = db.channels().at_index(7).name();
  db.edit([](channel_list& list) {
    list.at_index(5).set<"networkName">("ASTRA 1");
    list.move(7, 1);
  });
  EXPECT_EQ(seventh, db.channels().at_index(1).name());
  EXPECT_EQ("ASTRA 1", db.channels().at_index(6).get<"networkName">());
  EXPECT_EQ(Names(db.channels()), Names(home.Satellite().channels()));
}

TEST(ApiEdit, MovingPutsAtThePlace) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  std::vector<std::string> names = Names(db.channels());
  db.edit([](channel_list& list) { list.move(2, 6); });
  std::rotate(names.begin() + 1, names.begin() + 2, names.begin() + 6);
  EXPECT_EQ(names, Names(db.channels()));
  ExpectError("none with that index",
              [&] { db.edit([](channel_list& list) { list.move(1, 999); }); });
}

// An attribute of another program's, which the library does not know.
TEST(ApiEdit, WhatIsUnknownOfAChannelComesToNoOther) {
  const ApiHome home;
  std::string bytes = home.Read("ChanInfo.xml");
  const std::size_t first = bytes.find("<Channel ", bytes.find("inputSignalType=\"64\""));
  home.Write("ChanInfo.xml", bytes.insert(first + 8, " note=\"mine\""));
  const auto isThere = [&] {
    return home.Read("ChanInfo.xml").find("note=\"mine\"") != std::string::npos;
  };
  zortunedex::database db = home.Satellite();
  db.edit([](channel_list& list) {
    list.at_index(1).set_display_name("Mine").set_frequency(1);
    list.add(list.at_index(1));
  });
  EXPECT_TRUE(isThere());
  db.edit([](channel_list& list) { list.move(7, 1); });
  EXPECT_FALSE(isThere());
}

TEST(ApiEdit, EveryOperationInBothForms) {
  for (const auto form : {zortunedex::file_form::xml, zortunedex::file_form::preformatted}) {
    const ApiHome home;
    for (const SampleSet& set : kSampleSets) {
      if (set.kind == zortunedex::signal::isdb_one_seg && !HoldsJapaneseNames(home)) continue;
      zortunedex::database db = home.Open(set.country, set.kind);
      const std::size_t count = db.channels().size();
      db.edit(
          [&](channel_list& list) {
            channel added = list.new_channel();
            added.set_name("Neu").set_display_name("Neu").set_favorite().set_locked();
            EXPECT_EQ(count + 1, list.add(added));
            list.remove(1);
            EXPECT_EQ(1U, list.at_index(1).index());
            list.sort({}, &channel::display_name);
          },
          form);
      EXPECT_EQ(count, db.channels().size()) << name_of(set.kind);
      EXPECT_EQ(1, std::ranges::count(db.channels(), "Neu", &channel::name)) << name_of(set.kind);
      EXPECT_TRUE(std::ranges::is_sorted(db.channels(), {}, &channel::display_name));
    }
  }
}

TEST(ApiEdit, WhatTheLibraryDoesNotKnowStaysWhereChannelsStay) {
  const ApiHome home(false);
  home.Write("ChanInfo.xml",
             "<CHANNELTABLE><Country countrycode=\"49\"><ChannelSet inputSignalType=\"5\">"
             "<Channel name=\"a\" index=\"2\" mine=\"kept\"/><Channel name=\"b\" index=\"9\"/>"
             "</ChannelSet></Country></CHANNELTABLE>");
  zortunedex::database db = home.Open(49, zortunedex::signal::fm_radio);
  db.edit([](channel_list& list) {
    list.at_index(9).set_name("c");
    EXPECT_EQ(10U, list.add(list.new_channel().set_name("d")));
  });
  EXPECT_EQ((std::vector<std::string>{"a", "c", "d"}), Names(db.channels()));
  EXPECT_NE(std::string::npos, home.Read("ChanInfo.xml").find("mine=\"kept\""));
}

TEST(ApiEdit, NothingChangedIsNothingWritten) {
  const ApiHome home;
  const std::string before = home.Read("ChanInfo.xml");
  zortunedex::database db = home.Satellite();
  db.edit([](channel_list&) {});
  db.edit([](channel_list& list) { list.at_index(1).set_name(list.at_index(1).name()); });
  EXPECT_EQ(before, home.Read("ChanInfo.xml"));
  const ApiHome empty(false);
  empty.Satellite().edit([](channel_list&) {});
  EXPECT_FALSE(empty.Has("ChanInfo.xml"));
}

TEST(ApiEdit, AnEmptyListIsWritten) {
  const ApiHome home;
  home.Satellite().edit([](channel_list& list) { list.clear(); });
  EXPECT_TRUE(home.Satellite().channels().empty());
  EXPECT_FALSE(home.Open(49, zortunedex::signal::fm_radio).channels().empty());
}

TEST(ApiEdit, WhatIsRaisedMeanwhileLeavesTheFile) {
  const ApiHome home;
  const std::string before = home.Read("ChanInfo.xml");
  zortunedex::database db = home.Satellite();
  const std::vector<std::string> names = Names(db.channels());
  EXPECT_THROW(db.edit([](channel_list& list) {
    list.clear();
    throw std::logic_error("changed my mind");
  }),
               std::logic_error);
  EXPECT_EQ(before, home.Read("ChanInfo.xml"));
  EXPECT_EQ(names, Names(db.channels()));
}

TEST(ApiEdit, WhatTheFileCannotHoldIsRefused) {
  const ApiHome home;
  const std::string before = home.Read("ChanInfo.xml");
  zortunedex::database db = home.Satellite();
  // The file has no word for it and would read back as not set.
  const auto raised = ExpectError("modulation of channel 1", [&] {
    db.edit([](channel_list& list) { list.at_index(1).set<"modulation">(BDA_MOD_8PSK); });
  });
  EXPECT_NE(std::string::npos, raised.where().find("ChanInfo.xml"));
  for (const char* text : {"a & b", "<b>", "say \"no\"", "tab\there"}) {
    ExpectError("form cannot keep", [&] {
      db.edit([&](channel_list& list) { list.at_index(1).set<"networkName">(text); },
              zortunedex::file_form::preformatted);
    });
    EXPECT_EQ(before, home.Read("ChanInfo.xml")) << text;
    db.edit([&](channel_list& list) { list.at_index(1).set<"networkName">(text); });
    EXPECT_EQ(text, db.channels().at_index(1).get<"networkName">());
    home.Write("ChanInfo.xml", before);
  }
  const channel foreign = home.Open(49, zortunedex::signal::fm_radio).channels().at_index(1);
  ExpectError("another signal", [&] { db.edit([&](channel_list& list) { list.add(foreign); }); });
  ExpectError("another signal type",
              [&] { db.edit([&](channel_list& list) { list.at_index(1) = foreign; }); });
  EXPECT_EQ(before, home.Read("ChanInfo.xml"));
}

TEST(ApiEdit, ThePreformattedFormIsNotForOthersBlanksEither) {
  const ApiHome home;
  home.Open(49, zortunedex::signal::fm_radio).edit([](channel_list& list) {
    list.at_index(1).set_name("tab\there");
  });
  const std::string before = home.Read("ChanInfo.xml");
  const auto change = [&] {
    home.Satellite().edit([](channel_list& list) { list.at_index(1).set_favorite(false); },
                          zortunedex::file_form::preformatted);
  };
  ExpectError("a tab or a line end", change);
  home.Open(49, zortunedex::signal::fm_radio).edit([](channel_list& list) {
    list.at_index(1).set_name("this & that");
  });
  const std::string markup = home.Read("ChanInfo.xml");
  ExpectError("cannot be read back", change);
  EXPECT_EQ(markup, home.Read("ChanInfo.xml"));
  EXPECT_NE(before, markup);
}

TEST(ApiEdit, ADamagedFileIsNotWrittenOver) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  home.Write("ChanInfo.xml", "<CHANNELTABLE>");
  ExpectError("not well-formed", [&] { db.edit([](channel_list& list) { list.clear(); }); });
  EXPECT_EQ("<CHANNELTABLE>", home.Read("ChanInfo.xml"));
}

TEST(ApiEdit, EditingStartsWithWhatTheFileHasNow) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  home.Satellite().edit([](channel_list& list) { list.at_index(2).set_name("by another"); });
  db.edit([](channel_list& list) { list.at_index(1).set_name("by me"); });
  EXPECT_EQ("by another", db.channels().at_index(2).name());
  EXPECT_EQ("by me", db.channels().at_index(1).name());
}

TEST(ApiEdit, SomebodyElsesChangeMeanwhileIsNotOverwritten) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  std::string theirs;
  ExpectError("somebody else", [&] {
    db.edit([&](channel_list& list) {
      list.clear();
      home.Satellite().edit([](channel_list& other) { other.remove(1); });
      theirs = home.Read("ChanInfo.xml");
    });
  });
  EXPECT_EQ(theirs, home.Read("ChanInfo.xml"));
}

TEST(ApiEdit, RemovingByAPredicate) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  const auto favorites =
      static_cast<std::size_t>(std::ranges::count_if(db.channels(), &channel::favorite));
  const std::size_t count = db.channels().size();
  db.edit([&](channel_list& list) { EXPECT_EQ(favorites, list.remove_if(&channel::favorite)); });
  EXPECT_EQ(count - favorites, db.channels().size());
  EXPECT_EQ(0U, static_cast<std::size_t>(std::ranges::count_if(db.channels(), &channel::favorite)));
}

}  // namespace

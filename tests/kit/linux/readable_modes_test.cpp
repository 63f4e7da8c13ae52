// Files that may not be read, or are none.
//
// Linux only: modes, pipes and the place that one parser tells
#include <sys/stat.h>

#include "kit/home.h"
#include "kit/reading/readable.h"
#include "support/linux/child.h"

namespace zortunedex::kit {

namespace {

TEST(ReadableModes, WithoutTheRightToReadTheCauseIsTold) {
  const Home home;
  ASSERT_EQ(0, chmod(home.Path().c_str(), 0755));
  ASSERT_EQ(0, chmod(home.Files().File("ChanInfo.xml").c_str(), 0));
  EXPECT_TRUE(AsNobody([&] {
    try {
      RequireReadable(home.Path(), "ChanInfo.xml");
      return false;
    } catch (const UnreadableFile& failure) {
      return failure.what() == std::string("ChanInfo.xml cannot be read: Permission denied");
    }
  }));
}

TEST(ReadableModes, WhatIsNoFileIsNotRead) {
  const Home home(Home::Start::Empty);
  ASSERT_EQ(0, mkfifo(home.Files().File("ChanInfo.xml").c_str(), 0600));
  ExpectRaised<UnreadableFile>("ChanInfo.xml cannot be read: it is no regular file",
                               [&] { RequireReadable(home.Path(), "ChanInfo.xml"); });
}

TEST(ReadableModes, WhereNoWordsAreFoundTheParsersPlaceIsTold) {
  const Home home(Home::Start::Empty);
  home.Files().Write("ChanInfo.xml", "<a>\n<b:c/></a>");
  ExpectRaised<UnreadableFile>(
      "ChanInfo.xml cannot be read: line 2, column 5: it is not well-formed XML",
      [&] { RequireReadable(home.Path(), "ChanInfo.xml"); });
}

}  // namespace

}  // namespace zortunedex::kit

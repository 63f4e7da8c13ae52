#include "kit/reading/readable.h"

#include <filesystem>

#include "kit/home.h"
#include "kit/model/channel_list.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

const char* const kName = "ChanInfo.xml";

/// Saving keeps a file that the library could not read beside the new one.
bool LibraryReads(const Home& home) {
  {
    const Database database(home.At(49, InputSignalFMRadio));
    EXPECT_EQ(S_OK, database->SetStorageType(StorageXML));
    EXPECT_EQ(S_OK, database->SaveChannelToFile());
  }
  return !std::filesystem::remove(home.Files().File("ChanInfo.xml.unreadable"));
}

bool IsRefused(const Home& home) {
  try {
    RequireReadable(home.Path(), kName);
    return false;
  } catch (const UnreadableFile&) {
    return true;
  }
}

void ExpectFault(const std::string& message, const Home& home) {
  ExpectRaised<UnreadableFile>(std::string(kName) + " cannot be read: " + message,
                               [&] { RequireReadable(home.Path(), kName); });
}

TEST(Readable, MissingAndWholeFilesAre) {
  EXPECT_NO_THROW(RequireReadable(Home(Home::Start::Empty).Path(), kName));
  const Home home;
  for (const char* name :
       {"ChanInfo.xml", "SatelliteInfo.xml", "UserSettings.xml", "PreSetChannelInfo.xml"}) {
    EXPECT_NO_THROW(RequireReadable(home.Path(), name)) << name;
  }
}

TEST(Readable, DamagedFilesAreNotAndThePlaceIsTold) {
  const Home home(Home::Start::Empty);
  home.Files().Write(kName, "<CHANNELTABLE>\r\n\t<Country name=\"A & B\"/>\r\n</CHANNELTABLE>");
  ExpectFault("line 2, column 19: an & stands alone; &amp; is meant", home);
  home.Files().Write(kName, "");
  ExpectFault("line 1, column 1: the file is empty", home);
  std::filesystem::remove(home.Files().File(kName));
  std::filesystem::create_directory(home.Files().File(kName));
  ExpectFault("it is a folder", home);
}

TEST(Readable, ListsAreNotTakenForEmpty) {
  const Home home;
  const std::string whole = home.Channels();
  home.Files().Write(kName, whole.substr(0, whole.size() / 2));
  const Location location = home.At(49, InputSignalDVBSatellite);
  EXPECT_THROW(ChannelList{location}, UnreadableFile);
  EXPECT_TRUE(ChannelList(location, Unreadable::TakeAsEmpty).Channels().empty());
}

// The tool refuses what the library does not read, and nothing else.
TEST(Readable, IsWhatTheLibraryReads) {
  const std::string document =
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE><Country name=\"A&amp;B\" "
      "countrycode=\"49\"><ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\"><Channel "
      "name=\"\xC3\xA4\" index=\"1\" freq=\"9\"/></ChannelSet></Country><!-- c --></CHANNELTABLE>";
  const std::string bytes =
      "<>&;\"'/= \n\x01\xC3\xA4"
      "a1-!?[]#\\";
  Random random(20);
  const Home home(Home::Start::Empty);
  int refused = 0;
  for (int i = 0; i < 400; ++i) {
    std::string text = document;
    const std::size_t place = random(static_cast<std::uint32_t>(text.size()));
    const char byte = bytes[random(static_cast<std::uint32_t>(bytes.size()))];
    switch (random(4)) {
      case 0:
        text.erase(place, 1 + random(4));
        break;
      case 1:
        text.insert(place, 1, byte);
        break;
      case 2:
        text[place] = byte;
        break;
      default:
        text.resize(1 + random(static_cast<std::uint32_t>(text.size())));
    }
    home.Files().Write(kName, text);
    const bool isRefused = IsRefused(home);
    refused += isRefused ? 1 : 0;
    ASSERT_EQ(LibraryReads(home), !isRefused) << text;
  }
  EXPECT_LT(200, refused);
  EXPECT_GT(380, refused);
}

}  // namespace

}  // namespace zortunedex::kit

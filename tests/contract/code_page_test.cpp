// Narrow texts in the process's code page: station blocks hold them so, files hold Unicode.
#include "support/code_page.h"

#include "contract/database.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr std::size_t kNameOffset = 608;
constexpr WideView kTelevision = OLESTR("\u30C6\u30EC\u30D3");
constexpr char kTelevisionUtf8[] = "\xE3\x83\x86\xE3\x83\xAC\xE3\x83\x93";

template <UINT kPage>
class CodePages : public InCodePage<kPage> {
 protected:
  CodePages()
      : m_database(OpenDatabase(m_directory.Path(), kSatellite)),
        m_channel(Add(ListOf(m_database, kSatellite), MakeChannel(kSatellite, 1))) {}

  std::string NameBytes() const {
    return reinterpret_cast<const char*>(Fetch(m_channel).station.block.data() + kNameOffset);
  }
  /// Sets the name and expects it in the block as these bytes, and back.
  void ExpectName(WideView name, const std::string& bytes) {
    ExpectHr(S_OK, m_channel->SetChannelName(Bstr(name).Get()));
    EXPECT_EQ(bytes, NameBytes());
    Bstr actual;
    ExpectHr(S_OK, m_channel->GetChannelName(actual.Receive()));
    ExpectText(name, actual.Get());
  }
  /// The names of the channel in the file read as these.
  void ExpectSaved(WideView name, WideView displayName) const {
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kSatellite);
    const ComPtr<IChannelInfo> channel = ChannelAt(ListOf(database, kSatellite), 1);
    Bstr actual;
    ExpectHr(S_OK, channel->GetChannelName(actual.Receive()));
    ExpectText(name, actual.Get());
    ExpectHr(S_OK, channel->GetChannelDspName(actual.Receive()));
    ExpectText(displayName, actual.Get());
  }
  /// Both names go to the file in UTF-8 and come back.
  void ExpectFileInUnicode() {
    ExpectHr(S_OK, m_channel->SetChannelName(Bstr(kTelevision).Get()));
    ExpectHr(S_OK, m_channel->SetChannelDspName(Bstr(OLESTR("\u30C6 \u30EC")).Get()));
    ExpectHr(S_OK, m_database->SaveChannelToFile());
    EXPECT_NE(std::string::npos, m_directory.Read("ChanInfo.xml").find(kTelevisionUtf8));
    ExpectSaved(kTelevision, OLESTR("\u30C6 \u30EC"));
  }
  void ExpectDirectory() {
    const auto path = std::filesystem::path(m_directory.Path()) / std::u16string(u"\u30C6\u30EC");
    ASSERT_TRUE(std::filesystem::create_directory(path));
    const ComPtr<IZorTunedex> database = OpenDatabase(path, kSatellite);
    AddMade(ListOf(database, kSatellite), kSatellite, 1);
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_TRUE(std::filesystem::exists(path / "ChanInfo.xml"));
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfo> m_channel;
};
class CodePages932 : public CodePages<932> {};
class CodePages1252 : public CodePages<1252> {};
class CodePages65001 : public CodePages<65001> {};

}  // namespace

TEST_F(CodePages65001, NamesInTheBlock) { ExpectName(kTelevision, kTelevisionUtf8); }

TEST_F(CodePages932, NamesInTheBlock) { ExpectName(kTelevision, "\x83\x65\x83\x8C\x83\x72"); }

TEST_F(CodePages1252, NamesInTheBlock) {
  ExpectName(OLESTR("\u20AC \u00E9"), "\x80 \xE9");
  // What the code page lacks is lost.
  ExpectHr(S_OK, m_channel->SetChannelName(Wide("x").Get()));
  ExpectHr(S_OK, m_channel->SetChannelName(Bstr(OLESTR("\u30C6")).Get()));
  EXPECT_EQ("?", NameBytes());
}

TEST_F(CodePages65001, FilesHoldUnicode) { ExpectFileInUnicode(); }

TEST_F(CodePages932, FilesHoldUnicode) { ExpectFileInUnicode(); }

// What is read from a file passes through the code page.
TEST_F(CodePages1252, FilesHoldMoreThanCanBeRead) {
  ExpectHr(S_OK, m_channel->SetChannelName(Wide("N").Get()));
  ExpectHr(S_OK, m_channel->SetChannelDspName(Wide("D").Get()));
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  std::string file = m_directory.Read("ChanInfo.xml");
  for (const std::string name : {"name=\"N", "nameDisplay=\"D"}) {
    const std::size_t place = file.find(name + '"');
    ASSERT_NE(std::string::npos, place) << file;
    file.replace(place + name.size() - 1, 1, kTelevisionUtf8);
  }
  m_directory.Write("ChanInfo.xml", file);
  ExpectSaved(OLESTR("???"), OLESTR("???"));
}

TEST_F(CodePages932, Directories) { ExpectDirectory(); }

TEST_F(CodePages65001, Directories) { ExpectDirectory(); }

// The process-wide code page of narrow texts.
//
// Linux only: only there does the process choose its code page
#include "contract/database.h"
#include "contract/stations.h"
#include "platform/host.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr std::size_t kNameOffset = 608;
constexpr UINT kUtf8 = 65001;

class CodePages : public testing::Test {
 protected:
  CodePages() : m_database(OpenDatabase(m_directory.Path(), kSatellite)), m_list(List(m_database)) {
    m_channel = Add(m_list, MakeChannel(kSatellite, 1));
  }
  ~CodePages() override { host::SetCodePage(kUtf8); }

  static ComPtr<IChannelInfoMgr> List(const ComPtr<IZorTunedex>& database) {
    return ListOf(database, kSatellite);
  }
  std::string NameBytes() const {
    return reinterpret_cast<const char*>(Fetch(m_channel).station.block.data() + kNameOffset);
  }
  // Sets the name and expects it in the block as these bytes, and back.
  void ExpectName(WideView name, const std::string& bytes) {
    ExpectHr(S_OK, m_channel->SetChannelName(Bstr(name).Get()));
    EXPECT_EQ(bytes, NameBytes());
    Bstr actual;
    ExpectHr(S_OK, m_channel->GetChannelName(actual.Receive()));
    ExpectText(name, actual.Get());
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
  ComPtr<IChannelInfo> m_channel;
};

}  // namespace

TEST_F(CodePages, ThoseThatCanBeHad) {
  for (const UINT page : {932U, 936U, 949U, 950U, 1250U, 1251U, 1252U, 1253U, 1254U, 1255U, 1256U,
                          1257U, 1258U, kUtf8}) {
    ExpectHr(S_OK, host::SetCodePage(page));
  }
  for (const UINT page : {0U, 1U, 3U, 437U, 874U, 1249U, 1259U, 20127U, 65000U, 0xFFFFFFFFU}) {
    ExpectHr(E_INVALIDARG, host::SetCodePage(page));
  }
}

TEST_F(CodePages, Utf8AtFirst) {
  ExpectName(u"\u30C6\u30EC\u30D3", "\xE3\x83\x86\xE3\x83\xAC\xE3\x83\x93");
}

TEST_F(CodePages, Japanese) {
  ExpectHr(S_OK, host::SetCodePage(932));
  ExpectName(u"\u30C6\u30EC\u30D3", "\x83\x65\x83\x8C\x83\x72");
  // A refused one leaves the old one.
  ExpectHr(E_INVALIDARG, host::SetCodePage(12));
  ExpectName(u"\u30C6", "\x83\x65");
}

TEST_F(CodePages, WesternEuropean) {
  ExpectHr(S_OK, host::SetCodePage(1252));
  ExpectName(u"\u20AC \u00E9", "\x80 \xE9");
  // What the code page lacks is lost.
  ExpectHr(S_OK, m_channel->SetChannelName(Wide("x").Get()));
  ExpectHr(S_OK, m_channel->SetChannelName(Bstr(WideView(u"\u30C6")).Get()));
  EXPECT_EQ("?", NameBytes());
}

// The file holds Unicode; what is read from it passes through the code page.
TEST_F(CodePages, FilesAreTheSameInEveryCodePage) {
  ExpectHr(S_OK, host::SetCodePage(932));
  ExpectHr(S_OK, m_channel->SetChannelName(Bstr(WideView(u"\u30C6\u30EC\u30D3")).Get()));
  ExpectHr(S_OK, m_channel->SetChannelDspName(Bstr(WideView(u"\u30C6 \u30EC")).Get()));
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  for (const UINT page : {932U, kUtf8}) {
    ExpectHr(S_OK, host::SetCodePage(page));
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kSatellite);
    const ComPtr<IChannelInfo> channel = ChannelAt(List(database), 1);
    Bstr name;
    ExpectHr(S_OK, channel->GetChannelName(name.Receive()));
    ExpectText(u"\u30C6\u30EC\u30D3", name.Get());
    ExpectHr(S_OK, channel->GetChannelDspName(name.Receive()));
    ExpectText(u"\u30C6 \u30EC", name.Get());
  }
  ExpectHr(S_OK, host::SetCodePage(1252));
  Bstr name;
  const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kSatellite);
  ExpectHr(S_OK, ChannelAt(List(database), 1)->GetChannelDspName(name.Receive()));
  ExpectText(u"? ?", name.Get());
}

// Paths are UTF-8 whatever the code page is.
TEST_F(CodePages, DirectoriesDoNotDependOnIt) {
  ExpectHr(S_OK, host::SetCodePage(1252));
  const auto path = std::filesystem::path(m_directory.Path()) / u"\u30C6\u30EC\u30D3";
  ASSERT_TRUE(std::filesystem::create_directory(path));
  const ComPtr<IZorTunedex> database = OpenDatabase(path, kSatellite);
  AddMade(List(database), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_TRUE(std::filesystem::exists(path / "ChanInfo.xml"));
}

// The process-wide code page of narrow texts, chosen; contract/code_page_test.cpp has the rest.
//
// Linux only: only there does the process choose its code page
#include "contract/database.h"
#include "contract/stations.h"
#include "platform/host.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr UINT kUtf8 = 65001;

class ChosenCodePage : public testing::Test {
 protected:
  ChosenCodePage()
      : m_database(OpenDatabase(m_directory.Path(), kSatellite)),
        m_channel(Add(ListOf(m_database, kSatellite), MakeChannel(kSatellite, 1))) {}
  ~ChosenCodePage() override { host::SetCodePage(kUtf8); }

  void ExpectName(WideView name) const {
    Bstr actual;
    ExpectHr(S_OK, m_channel->GetChannelName(actual.Receive()));
    ExpectText(name, actual.Get());
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfo> m_channel;
};

}  // namespace

TEST_F(ChosenCodePage, ThoseThatCanBeHad) {
  for (const UINT page : {932U, 936U, 949U, 950U, 1250U, 1251U, 1252U, 1253U, 1254U, 1255U, 1256U,
                          1257U, 1258U, kUtf8}) {
    ExpectHr(S_OK, host::SetCodePage(page));
  }
  for (const UINT page : {0U, 1U, 3U, 437U, 874U, 1249U, 1259U, 20127U, 65000U, 0xFFFFFFFFU}) {
    ExpectHr(E_INVALIDARG, host::SetCodePage(page));
  }
}

// The bytes of a name stay; what they read as depends on the page.
TEST_F(ChosenCodePage, Utf8AtFirst) {
  ExpectHr(S_OK, m_channel->SetChannelName(Bstr(WideView(u"\u30C6")).Get()));
  ExpectName(u"\u30C6");
  ExpectHr(S_OK, host::SetCodePage(1252));
  ExpectName(u"\u00E3\u0192\u2020");
}

TEST_F(ChosenCodePage, ARefusedOneLeavesTheOldOne) {
  ExpectHr(S_OK, host::SetCodePage(932));
  ExpectHr(E_INVALIDARG, host::SetCodePage(12));
  ExpectHr(S_OK, m_channel->SetChannelName(Bstr(WideView(u"\u30C6")).Get()));
  ExpectHr(S_OK, host::SetCodePage(1252));
  ExpectName(u"\u0192e");
}

// What was saved in one page is read in another.
TEST_F(ChosenCodePage, FilesPassFromOneToTheOther) {
  ExpectHr(S_OK, host::SetCodePage(932));
  ExpectHr(S_OK, m_channel->SetChannelName(Bstr(WideView(u"\u30C6\u30EC\u30D3")).Get()));
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  ExpectHr(S_OK, host::SetCodePage(kUtf8));
  const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kSatellite);
  Bstr name;
  ExpectHr(S_OK, ChannelAt(ListOf(database, kSatellite), 1)->GetChannelName(name.Receive()));
  ExpectText(u"\u30C6\u30EC\u30D3", name.Get());
}

// Paths are UTF-8 whatever the code page is.
TEST_F(ChosenCodePage, DirectoriesDoNotDependOnIt) {
  ExpectHr(S_OK, host::SetCodePage(1252));
  const auto path = std::filesystem::path(m_directory.Path()) / u"\u30C6\u30EC\u30D3";
  ASSERT_TRUE(std::filesystem::create_directory(path));
  const ComPtr<IZorTunedex> database = OpenDatabase(path, kSatellite);
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_TRUE(std::filesystem::exists(path / "ChanInfo.xml"));
}

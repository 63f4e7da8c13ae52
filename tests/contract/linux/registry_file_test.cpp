// The file that stands for the registry, as a host names it.
//
// Linux only: only there does a file stand for the registry
#include "contract/database.h"
#include "contract/stations.h"
#include "platform/host.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr InputSignalType kRadio = InputSignalFMRadio;

class RegistryFile : public testing::Test {
 protected:
  ~RegistryFile() override { host::SetRegistryFile(nullptr); }

  // The name that a new country gets.
  std::string CountryName(DWORD countryCode) const {
    const TempDir directory;
    const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kRadio, countryCode);
    AddMade(ListOf(database, kRadio), kRadio, 1);
    ExpectHr(S_OK, database->SaveChannelToFile());
    const std::string saved = directory.Read("ChanInfo.xml");
    const std::string before = "<Country name=\"";
    const std::size_t first = saved.find(before) + before.size();
    return saved.substr(first, saved.find('"', first) - first);
  }

  TempDir m_directory;
};

}  // namespace

TEST_F(RegistryFile, GivesCountriesTheirNames) {
  EXPECT_EQ("Germany", CountryName(kGermany));
  m_directory.Write("countries.reg",
                    "Windows Registry Editor Version 5.00\r\n\r\n"
                    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Telephony\\"
                    "Country List\\49]\r\n\"Name\"=\"Deutschland\"\r\n");
  ExpectHr(S_OK, host::SetRegistryFile(m_directory.File("countries.reg").c_str()));
  EXPECT_EQ("Deutschland", CountryName(kGermany));
  EXPECT_EQ("United Kingdom", CountryName(kUnitedKingdom));
  ExpectHr(S_OK, host::SetRegistryFile(nullptr));
  EXPECT_EQ("Germany", CountryName(kGermany));
}

TEST_F(RegistryFile, IsNotMadeByReading) {
  ExpectHr(S_OK, host::SetRegistryFile(m_directory.File("missing.reg").c_str()));
  EXPECT_EQ("Germany", CountryName(kGermany));
  EXPECT_EQ(0U, m_directory.Count());
}

TEST_F(RegistryFile, CountriesWithoutAName) { EXPECT_EQ("", CountryName(999)); }

TEST_F(RegistryFile, TakesTheClass) {
  ExpectHr(S_OK, host::SetRegistryFile(nullptr));
  ExpectHr(E_FAIL, host::RegisterServer());
  ExpectHr(E_FAIL, host::UnregisterServer());
  ExpectHr(S_OK, host::SetRegistryFile(m_directory.File("machine.reg").c_str()));
  ExpectHr(S_OK, host::RegisterServer());
  const std::size_t registered = m_directory.Read("machine.reg").size();
  ExpectHr(S_OK, host::UnregisterServer());
  EXPECT_LT(m_directory.Read("machine.reg").size(), registered);
  ExpectHr(S_OK, DllInstall(1, u"user"));
  EXPECT_GT(m_directory.Read("machine.reg").size(), registered);
  ExpectHr(S_OK, DllInstall(0, u"user"));
}

// The transponder tables of the distribution's package, which scripts/setup installs, from their
// text through the catalogue file to the library's records. The tables are read here once more, in
// a few lines and for the form that the package has.
#include <filesystem>
#include <fstream>
#include <map>

#include "core/interfaces.h"
#include "platform/bstr.h"
#include "platform/com_ptr.h"
#include "platform/host.h"
#include "tool/satellite_home.h"

namespace zortunedex::kit::tool {

namespace {

namespace fs = std::filesystem;

/// What is compared, in the order of the file: frequency, polarisation, symbol rate, FEC rate,
/// modulation, inversion.
using Tuning = std::array<std::int64_t, 6>;
using Bands = std::array<std::vector<Tuning>, 2>;

fs::path PackageFolder() {
  const fs::path path = "/usr/share/dvb/dvb-s";
  // Where drives have letters, that tree has one of its own.
  return fs::exists(path) ? path : fs::path("Z:") / path;
}

const std::map<std::string, int> kPolarisations = {
    {"HORIZONTAL", 1}, {"VERTICAL", 2}, {"LEFT", 3}, {"RIGHT", 4}};
const std::map<std::string, int> kRates = {{"1/2", 1}, {"2/3", 2}, {"3/4", 3}, {"3/5", 4},
                                           {"4/5", 5}, {"5/6", 6}, {"7/8", 8}};

template <typename Words>
int WordOf(const Words& words, const std::string& word) {
  const auto found = words.find(word);
  return found == words.end() ? -1 : found->second;
}

Tuning Expected(std::map<std::string, std::string>& values) {
  const bool first = values["DELIVERY_SYSTEM"] == "DVBS";
  const bool qpsk = values["MODULATION"] == "QPSK" || (first && values["MODULATION"].empty());
  return {std::stoll(values["FREQUENCY"]),
          WordOf(kPolarisations, values["POLARIZATION"]),
          (std::stoll(values["SYMBOL_RATE"]) + 500) / 1000,
          WordOf(kRates, values["INNER_FEC"]),
          qpsk ? 20 : -1,
          values["INVERSION"] == "AUTO" ? 1 : -1};
}

/// The sections of a table whose frequency makes sense, the first of equal ones.
Bands ReadTable(const fs::path& path) {
  Bands bands;
  std::map<std::string, std::string> values;
  const auto finish = [&] {
    if (values.empty()) return;
    const Tuning tuning = Expected(values);
    values.clear();
    std::vector<Tuning>& band = bands[tuning[0] < 10'000'000 ? 0 : 1];
    if (tuning[0] < 1'000'000) return;
    if (std::find(band.begin(), band.end(), tuning) == band.end()) band.push_back(tuning);
  };
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::size_t equals = line.find(" = ");
    if (line.starts_with("[")) finish();
    if (!line.starts_with("\t") || equals == std::string::npos) continue;
    values[line.substr(1, equals - 1)] = line.substr(equals + 3);
  }
  finish();
  return bands;
}

std::vector<Tuning> ReadBand(ISatelliteInfo* satellite, ESatFreqBand band) {
  std::vector<Tuning> tunings;
  ComPtr<ITransponderInfoMgr> list;
  EXPECT_LT(0, satellite->GetTransponderMgr(band, list.Receive()));
  UINT count = 0;
  EXPECT_EQ(S_OK, list->GetTransponderCount(&count));
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ITransponderInfo> record;
    EXPECT_EQ(S_OK, list->GetTransponderInfoByIndex(i, record.Receive()));
    DWORD frequency = 0;
    LONG rate = 0;
    Polarisation polarisation = BDA_POLARISATION_NOT_SET;
    BinaryConvolutionCodeRate fec = BDA_BCC_RATE_NOT_SET;
    ModulationType modulation = BDA_MOD_NOT_SET;
    SpectralInversion inversion = BDA_SPECTRAL_INVERSION_NOT_SET;
    record->GetCarrierFrequency(&frequency);
    record->GetPolarisation(&polarisation);
    record->GetSymbolRate(&rate);
    record->GetInnerFECRate(&fec);
    record->GetModulationType(&modulation);
    record->GetSpectralInversion(&inversion);
    tunings.push_back({frequency, polarisation, rate, fec, modulation, inversion});
  }
  return tunings;
}

/// The catalogue of a directory as the library has it.
class LoadedCatalogue {
 public:
  explicit LoadedCatalogue(const std::string& directory) {
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(S_OK, host::GetClassObject(CLSID_ZorTunedex, IID_IClassFactory,
                                         reinterpret_cast<void**>(factory.Receive())));
    EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IZorTunedex,
                                            reinterpret_cast<void**>(m_database.Receive())));
    const std::u16string path = fs::path(directory).u16string();
    const Bstr text(std::basic_string<OLECHAR>(path.begin(), path.end()));
    EXPECT_EQ(S_OK, m_database->Open(text.Get(), 1, InputSignalDVBSatellite));
    EXPECT_EQ(S_OK, m_database->LoadSatInfoFromFile());
    EXPECT_LT(0, m_database->GetSatelliteInfoMgr(m_list.Receive()));
  }
  ~LoadedCatalogue() { m_database->Close(); }

  UINT Count() const {
    UINT count = 0;
    EXPECT_EQ(S_OK, m_list->GetSatCount(0, RegionUnknown, SatcoDX_Unknown, &count));
    return count;
  }
  ComPtr<ISatelliteInfo> Find(const std::string& id) const {
    ComPtr<ISatelliteInfo> satellite;
    // The list takes the text over and frees it.
    BSTR text = Bstr(std::basic_string<OLECHAR>(id.begin(), id.end())).Release();
    EXPECT_EQ(S_OK, m_list->GetSatInfoByID(&text, satellite.Receive())) << id;
    return satellite;
  }

 private:
  ComPtr<IZorTunedex> m_database;
  ComPtr<ISatelliteInfoMgr> m_list;
};

/// Tenths of a degree, from a name that ends with "-19.2E" or "-16E".
LONG LongitudeOf(const std::string& name) {
  const std::string position = name.substr(name.find_last_of("-_") + 1);
  const LONG tenths = static_cast<LONG>(std::stod(position) * 10 + 0.5);
  return position.back() == 'W' ? -tenths : tenths;
}

TEST(CataloguePackage, EverySatelliteComesBackAsItsTableHasIt) {
  const fs::path folder = PackageFolder();
  ASSERT_TRUE(fs::is_directory(folder)) << "scripts/setup installs the package of the tables";
  const TempDir home;
  const Outcome outcome = RunTool(
      {"catalogue", "build", folder.string(), "--json", "-o", home.File("SatelliteInfo.xml")});
  const nlohmann::ordered_json report = outcome.Json();
  EXPECT_TRUE(report["leftOut"]["files"].empty());
  const LoadedCatalogue catalogue(home.Path());
  std::size_t files = 0;
  std::size_t transponders = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const ComPtr<ISatelliteInfo> satellite = catalogue.Find(name);
    if (!satellite) continue;
    BOOL west = 0;
    LONG longitude = 0;
    EXPECT_EQ(S_OK, satellite->GetOrbitalPosition(&west, &longitude));
    EXPECT_EQ(0, west);
    EXPECT_EQ(LongitudeOf(name), longitude) << name;
    const Bands expected = ReadTable(entry.path());
    EXPECT_EQ(expected[0], ReadBand(satellite.Get(), SatFreqBand_CBand)) << name;
    EXPECT_EQ(expected[1], ReadBand(satellite.Get(), SatFreqBand_KuBand)) << name;
    ++files;
    transponders += expected[0].size() + expected[1].size();
  }
  EXPECT_LT(300U, files);
  EXPECT_EQ(files, catalogue.Count());
  EXPECT_EQ(files, report["satellites"]);
  EXPECT_EQ(transponders, report["transponders"]);
}

}  // namespace

}  // namespace zortunedex::kit::tool

// The catalogue of satellites, by value.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "api/zortunedex/opened.hpp"

namespace zortunedex {

/// One transponder of a satellite.
struct transponder {
  std::string name;                                           ///< UTF-8
  std::uint32_t frequency = 0;                                ///< in kHz
  Polarisation polarisation = BDA_POLARISATION_NOT_SET;       ///< how it is polarised
  std::int32_t symbol_rate = 0;                               ///< in thousands of symbols a second
  BinaryConvolutionCodeRate fec_rate = BDA_BCC_RATE_NOT_SET;  ///< of the inner code
  ModulationType modulation = BDA_MOD_NOT_SET;                ///< how it is modulated
  SpectralInversion inversion = BDA_SPECTRAL_INVERSION_NOT_SET;  ///< of the spectrum

  bool operator==(const transponder&) const = default;
};

/// One satellite of the catalogue.
struct satellite {
  std::string id;    ///< UTF-8; what assignments of dishes name it by
  std::string name;  ///< UTF-8
  std::int32_t longitude =
      0;  ///< in tenths of a degree; files of this system write the west negative
  std::int32_t azimuth = -1;                ///< in tenths of a degree; -1: not set
  std::int32_t elevation = -1;              ///< in tenths of a degree; -1: not set
  ESatRegion region = RegionUnknown;        ///< where it is received
  ESatDivision division = SatcoDX_Unknown;  ///< list of SatcoDX that it is in
  std::vector<transponder> c_band;          ///< in the order of the file
  std::vector<transponder> ku_band;         ///< in the order of the file

  bool operator==(const satellite&) const = default;
};

/// One type of low-noise block converter. Frequencies are in kHz.
struct lnb_type {
  std::string name;        ///< UTF-8
  std::uint32_t low = 0;   ///< local oscillator of the low band
  std::uint32_t high = 0;  ///< local oscillator of the high band; as low where there is one
  std::uint32_t switch_frequency = 0;  ///< where the high band begins; 0 where there is one band

  bool operator==(const lnb_type&) const = default;
};

namespace detail {

/// Asks a record for a text.
template <typename Record, typename Getter>
std::string TextOf(Record* record, Getter getter, const std::string& file) {
  Bstr text;
  Require((record->*getter)(text.Receive()), "read", file, "a text cannot be had");
  return ToUtf8(text.View());
}

/// Asks a record for numbers. Raises an error for the first one that cannot be had.
inline void RequireAll(std::initializer_list<HRESULT> results, const std::string& file) {
  for (const HRESULT result : results) Require(result, "read", file, "a number cannot be had");
}

inline transponder ReadTransponder(ITransponderInfo* record, const std::string& file) {
  transponder value;
  DWORD frequency = 0;
  LONG rate = 0;
  value.name = TextOf(record, &ITransponderInfo::GetName, file);
  RequireAll({record->GetCarrierFrequency(&frequency), record->GetPolarisation(&value.polarisation),
              record->GetSymbolRate(&rate), record->GetInnerFECRate(&value.fec_rate),
              record->GetModulationType(&value.modulation),
              record->GetSpectralInversion(&value.inversion)},
             file);
  value.frequency = frequency;
  value.symbol_rate = rate;
  return value;
}

/// The caller holds the satellite, whose lists do not keep it alive.
inline std::vector<transponder> ReadBand(ISatelliteInfo* owner, ESatFreqBand band,
                                         const std::string& file) {
  ComPtr<ITransponderInfoMgr> list;
  // Answers a reference count.
  Require(owner->GetTransponderMgr(band, list.Receive()), "read", file, "a band cannot be had");
  UINT count = 0;
  Require(list->GetTransponderCount(&count), "read", file, "transponders cannot be counted");
  std::vector<transponder> values;
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ITransponderInfo> record;
    Require(list->GetTransponderInfoByIndex(i, record.Receive()), "read", file,
            "a transponder is missing");
    values.push_back(ReadTransponder(record.Get(), file));
  }
  return values;
}

inline satellite ReadSatellite(ISatelliteInfo* record, const std::string& file) {
  satellite value;
  BOOL west = 0;  // the file has no place for it
  LONG longitude = 0;
  LONG azimuth = 0;
  LONG elevation = 0;
  value.id = TextOf(record, &ISatelliteInfo::GetID, file);
  value.name = TextOf(record, &ISatelliteInfo::GetName, file);
  RequireAll({record->GetOrbitalPosition(&west, &longitude), record->GetAzimuth(&azimuth),
              record->GetElevation(&elevation), record->GetRegion(&value.region),
              record->GetDivision(&value.division)},
             file);
  value.longitude = longitude;
  value.azimuth = azimuth;
  value.elevation = elevation;
  value.c_band = ReadBand(record, SatFreqBand_CBand, file);
  value.ku_band = ReadBand(record, SatFreqBand_KuBand, file);
  return value;
}

inline std::vector<satellite> ReadSatellites(const Opened& database, const std::string& file) {
  ComPtr<ISatelliteInfoMgr> list;
  // Answers a reference count, as the LNB list does below.
  Require(database->GetSatelliteInfoMgr(list.Receive()), "read", file, "there is no list");
  UINT count = 0;
  Require(list->GetSatCount(0, RegionUnknown, SatcoDX_Unknown, &count), "read", file,
          "satellites cannot be counted");
  std::vector<satellite> values;
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ISatelliteInfo> record;
    Require(list->GetSatInfoByIndex(i, 0, RegionUnknown, SatcoDX_Unknown, record.Receive()), "read",
            file, "a satellite is missing");
    values.push_back(ReadSatellite(record.Get(), file));
  }
  return values;
}

inline std::vector<lnb_type> ReadLnbs(const Opened& database, const std::string& file) {
  ComPtr<ILNBInfoMgr> list;
  Require(database->GetLNBInfoMgr(list.Receive()), "read", file, "there is no list");
  UINT count = 0;
  Require(list->GetLNBCount(&count), "read", file, "LNB types cannot be counted");
  std::vector<lnb_type> values;
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ILNBInfo> record;
    Require(list->GetLNBInfoByIndex(i, record.Receive()), "read", file, "an LNB type is missing");
    DWORD low = 0;
    DWORD high = 0;
    DWORD switchover = 0;
    RequireAll(
        {record->GetLowFreq(&low), record->GetHighFreq(&high), record->GetSwitchFreq(&switchover)},
        file);
    values.push_back({TextOf(record.Get(), &ILNBInfo::GetType, file), low, high, switchover});
  }
  return values;
}

struct Catalogue {
  std::vector<satellite> satellites;
  std::vector<lnb_type> lnbs;
};

inline Catalogue ReadCatalogue(const Location& location) {
  const std::string file = location.File(kCatalogueFile);
  return Guarded("read", file, [&] {
    const Opened database(location.For(signal::dvb_satellite));
    const HRESULT result = database->LoadSatInfoFromFile();
    Catalogue catalogue = {ReadSatellites(database, file), ReadLnbs(database, file)};
    // A catalogue whose last satellite has no Ku band fails, although all of it is there.
    if (FAILED(result) && catalogue.satellites.empty() && catalogue.lnbs.empty()) {
      const bool isThere = ReadBytes(location.directory / kCatalogueFile).has_value();
      throw error(result, "read", file,
                  isThere ? "it holds no catalogue" : "there is no such file");
    }
    return catalogue;
  });
}

}  // namespace detail
}  // namespace zortunedex

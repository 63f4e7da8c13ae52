// The satellite catalogue by value.
#pragma once

#include <string>
#include <vector>

#include "kit/model/database.h"

namespace zortunedex::kit {

/// In the units of this host: kHz and thousands of symbols a second.
struct Transponder {
  WideText name;
  DWORD frequency = 0;
  Polarisation polarisation = BDA_POLARISATION_NOT_SET;
  LONG symbolRate = 0;
  BinaryConvolutionCodeRate fecRate = BDA_BCC_RATE_NOT_SET;
  ModulationType modulation = BDA_MOD_NOT_SET;
  SpectralInversion inversion = BDA_SPECTRAL_INVERSION_NOT_SET;

  bool operator==(const Transponder&) const = default;
};

struct Satellite {
  WideText id;
  WideText name;
  bool west = false;   ///< has no place in the file and reads as false
  LONG longitude = 0;  ///< tenths of a degree; this host writes negative ones for the west
  LONG azimuth = -1;   ///< tenths of a degree; -1: not set
  LONG elevation = -1;
  ESatRegion region = RegionUnknown;
  ESatDivision division = SatcoDX_Unknown;
  std::vector<Transponder> cBand;
  std::vector<Transponder> kuBand;

  bool operator==(const Satellite&) const = default;
};

/// Frequencies in kHz. A type with one oscillator has it as both, and 0 as its switch frequency.
struct LnbType {
  WideText type;
  DWORD low = 0;
  DWORD high = 0;
  DWORD switchover = 0;

  bool operator==(const LnbType&) const = default;
};

struct SatelliteCatalogue {
  std::vector<Satellite> satellites;
  std::vector<LnbType> lnbs;

  std::size_t TransponderCount() const;
  /// By id, else by name: the first one. Failure that names what is there.
  const Satellite& FindSatellite(const std::string& utf8) const;
  /// Failure that names what is there.
  const LnbType& FindLnb(const std::string& utf8) const;
};

/// Loads SatelliteInfo.xml through the interfaces, in the order of the file. Failure when there is
/// none or it cannot be read.
SatelliteCatalogue ReadCatalogue(const Location& location);

}  // namespace zortunedex::kit

#include "xml/codecs/satellite_elements.h"

#include "words/tuning_texts.h"
#include "xml/elements/carry_text.h"
#include "xml/elements/xml_nodes.h"

namespace xml {

namespace {

// The value of a word, or `notSet` where the text is none.
template <typename T>
T ValueOf(HRESULT (*reader)(std::string_view, T*), std::string_view word, T notSet) {
  T value = notSet;
  reader(word, &value);
  return value;
}

HRESULT ReadSatellite(const dom::Element& element, ISatelliteInfo* satellite) {
  CarryText texts(element);
  satellite->SetOrbitalPosition(0, AttrInt(element, "pos"));
  satellite->SetName(texts.Wide("name").Get());
  satellite->SetID(texts.Wide("id").Get());
  satellite->SetRegion(
      ValueOf(tuning_texts::SatRegionFromNarrow, texts.Narrow("region"), RegionUnknown));
  satellite->SetDivision(
      ValueOf(tuning_texts::SatDivisionFromNarrow, texts.Narrow("division"), SatcoDX_Unknown));
  // Spelt so in every file there is.
  satellite->SetAzimuth(AttrInt(element, "azimuthe"));
  satellite->SetElevation(AttrInt(element, "elevation"));
  return satellite->SetIndex(AttrUnsigned(element, "index"));
}

struct SatelliteValues {
  UINT index = 0;
  BOOL west = 0;
  LONG longitude = 0;
  LONG azimuth = 0;
  LONG elevation = 0;
  Bstr name;
  Bstr id;
  ESatRegion region = RegionUnknown;
  ESatDivision division = SatcoDX_Unknown;
};

HRESULT Fetch(ISatelliteInfo* satellite, SatelliteValues& values) {
  HRESULT hr = satellite->GetIndex(&values.index);
  if (SUCCEEDED(hr)) hr = satellite->GetOrbitalPosition(&values.west, &values.longitude);
  if (SUCCEEDED(hr)) hr = satellite->GetAzimuth(&values.azimuth);
  if (SUCCEEDED(hr)) hr = satellite->GetElevation(&values.elevation);
  if (SUCCEEDED(hr)) hr = satellite->GetName(values.name.Receive());
  if (SUCCEEDED(hr)) hr = satellite->GetID(values.id.Receive());
  if (SUCCEEDED(hr)) hr = satellite->GetRegion(&values.region);
  if (SUCCEEDED(hr)) hr = satellite->GetDivision(&values.division);
  return hr;
}

HRESULT WriteSatellite(const dom::Element& element, ISatelliteInfo* satellite) {
  SatelliteValues values;
  const HRESULT hr = Fetch(satellite, values);
  if (FAILED(hr)) return hr;
  Bstr region;
  Bstr division;
  SatRegionToText(values.region, region.Receive());
  SatDivisionToText(values.division, division.Receive());
  SetAttr(element, "pos", values.longitude);
  SetAttr(element, "name", values.name.Get());
  SetAttr(element, "id", values.id.Get());
  SetAttr(element, "region", region.Get());
  SetAttr(element, "division", division.Get());
  SetAttr(element, "azimuthe", values.azimuth);
  SetAttr(element, "elevation", values.elevation);
  return SetAttr(element, "index", static_cast<LONG>(values.index));
}

}  // namespace

HRESULT SatelliteElementIO(const dom::Element& element, ISatelliteInfo* satellite,
                           Direction direction) {
  if (!element || satellite == nullptr) return E_POINTER;
  return direction == Direction::Read ? ReadSatellite(element, satellite)
                                      : WriteSatellite(element, satellite);
}

HRESULT TransponderElementIO(const dom::Element& element, ITransponderInfo* transponder,
                             Direction direction) {
  if (!element || transponder == nullptr) return E_POINTER;
  if (direction == Direction::Write) return E_NOTIMPL;
  CarryText texts(element);
  transponder->SetName(texts.Wide("name").Get());
  transponder->SetCarrierFrequency(AttrUnsigned(element, "freq"));
  transponder->SetPolarisation(ValueOf(tuning_texts::PolarisationFromNarrow,
                                       texts.Narrow("polarisation"), BDA_POLARISATION_NOT_SET));
  transponder->SetSymbolRate(AttrInt(element, "symbolRate"));
  transponder->SetInnerFECRate(
      ValueOf(tuning_texts::FecRateFromNarrow, texts.Narrow("innerFECRate"), BDA_BCC_RATE_NOT_SET));
  transponder->SetModulationType(
      ValueOf(tuning_texts::ModulationFromNarrow, texts.Narrow("modulation"), BDA_MOD_NOT_SET));
  return transponder->SetSpectralInversion(ValueOf(tuning_texts::SpectralInversionFromNarrow,
                                                   texts.Narrow("spectralInversion"),
                                                   BDA_SPECTRAL_INVERSION_NOT_SET));
}

HRESULT LNBElementIO(const dom::Element& element, ILNBInfo* lnb, Direction direction) {
  if (!element || lnb == nullptr) return E_POINTER;
  if (direction == Direction::Write) return E_NOTIMPL;
  lnb->SetType(CarryText(element).Wide("type").Get());
  lnb->SetLowFreq(AttrUnsigned(element, "lowFreq"));
  lnb->SetHighFreq(AttrUnsigned(element, "highFreq"));
  return lnb->SetSwitchFreq(AttrUnsigned(element, "switchFreq"));
}

}  // namespace xml

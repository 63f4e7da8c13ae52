#include "kit/check/prediction/satellite_prediction.h"

#include "kit/check/subject/channel_tree.h"
#include "kit/check/subject/numbers.h"
#include "kit/check/subject/words.h"

namespace zortunedex::kit::check {
namespace {

using markup::Index;
using markup::kNone;
using station_blocks::Form;

ESatRegion RegionOf(std::string_view word) {
  constexpr std::string_view kWords[] = {"Asia", "Europe", "Atlantic", "America"};
  constexpr ESatRegion kRegions[] = {RegionAsia, RegionEurope, RegionAtlantic, RegionAmerica};
  for (std::size_t i = 0; i < std::size(kWords); ++i) {
    if (word == kWords[i]) return kRegions[i];
  }
  return RegionUnknown;
}

ESatDivision DivisionOf(std::string_view word) {
  const bool isOne = word.size() == 1 && word[0] >= '1' && word[0] <= '9';
  return isOne ? static_cast<ESatDivision>(word[0] - '0') : SatcoDX_Unknown;
}

/// A word of the tuning parameters; what is none reads as "not set".
template <typename Value>
Value ValueOf(Form form, std::string_view word) {
  return static_cast<Value>(words::Read(form, word).value_or(-1));
}

}  // namespace

/// The texts of an element one after the other: a missing one is the one that was read before it.
class SatellitePrediction::Texts {
 public:
  Texts(const SatellitePrediction& owner, Index element)
      : m_owner(owner), m_element(owner.m_document.Elements()[element]) {}

  const std::string& Narrow(const char* attribute) {
    if (const auto value = m_owner.m_document.ValueOf(m_element, attribute)) {
      std::string room;
      m_last = m_owner.m_text.Cut(*value, NarrowText::kAttributeLimit, room);
    }
    return m_last;
  }
  std::string Utf8(const char* attribute) {
    return utf::FromWide(m_owner.m_text.ToWide(Narrow(attribute)));
  }

 private:
  const SatellitePrediction& m_owner;
  const markup::Element& m_element;
  std::string m_last;
};

SatellitePrediction::Elements SatellitePrediction::InTable(std::string_view table,
                                                           std::string_view name) const {
  if (m_document.Elements().empty()) return {};
  const Index element = FirstChild(m_document, m_document.Elements()[0], table);
  return element == kNone ? Elements() : ChildrenOf(m_document, element, name);
}

SatellitePrediction::Elements SatellitePrediction::Transponders(Index satellite,
                                                                std::string_view band) const {
  const Index element = FirstChild(m_document, m_document.Elements()[satellite], band);
  return element == kNone ? Elements() : ChildrenOf(m_document, element, "Transponder");
}

SatellitePrediction::Elements SatellitePrediction::Assignments(std::size_t dish) const {
  const Elements dishes = InTable("SAT_SETTING", "DISH_" + std::to_string(dish + 1));
  return dishes.empty() ? Elements() : ChildrenOf(m_document, dishes.front(), "SAT");
}

std::int32_t SatellitePrediction::Number(Index element, std::string_view attribute) const {
  const auto value = m_document.ValueOf(m_document.Elements()[element], attribute);
  return value ? ReadNumber(*value).value : 0;
}

std::uint32_t SatellitePrediction::UnsignedNumber(Index element, std::string_view attribute) const {
  return Unsigned(Number(element, attribute));
}

Satellite SatellitePrediction::SatelliteOf(Index element) {
  Texts texts(*this, element);
  Satellite satellite;
  satellite.longitude = Number(element, "pos");
  satellite.name = texts.Utf8("name");
  satellite.id = texts.Utf8("id");
  satellite.region = RegionOf(texts.Narrow("region"));
  satellite.division = DivisionOf(texts.Narrow("division"));
  satellite.azimuth = Number(element, "azimuthe");
  satellite.elevation = Number(element, "elevation");
  return satellite;
}

Transponder SatellitePrediction::TransponderOf(Index element) {
  Texts texts(*this, element);
  Transponder transponder;
  transponder.name = texts.Utf8("name");
  transponder.frequency = UnsignedNumber(element, "freq");
  transponder.polarisation =
      ValueOf<Polarisation>(Form::Polarisation, texts.Narrow("polarisation"));
  transponder.symbol_rate = Number(element, "symbolRate");
  transponder.fec_rate =
      ValueOf<BinaryConvolutionCodeRate>(Form::FecRate, texts.Narrow("innerFECRate"));
  transponder.modulation = ValueOf<ModulationType>(Form::Modulation, texts.Narrow("modulation"));
  transponder.inversion =
      ValueOf<SpectralInversion>(Form::SpectralInversion, texts.Narrow("spectralInversion"));
  return transponder;
}

LnbType SatellitePrediction::LnbOf(Index element) {
  return {Texts(*this, element).Utf8("type"), UnsignedNumber(element, "lowFreq"),
          UnsignedNumber(element, "highFreq"), UnsignedNumber(element, "switchFreq")};
}

DishSatellite SatellitePrediction::AssignmentOf(Index element) {
  Texts texts(*this, element);
  DishSatellite assignment;
  assignment.id = texts.Utf8("id");
  assignment.band = texts.Utf8("band");
  assignment.low = UnsignedNumber(element, "LNB_Low");
  assignment.high = UnsignedNumber(element, "LNB_High");
  assignment.switch_frequency = UnsignedNumber(element, "LNB_Switch");
  return assignment;
}

SatelliteCatalogue SatellitePrediction::Catalogue() {
  SatelliteCatalogue catalogue;
  for (const Index element : Satellites()) {
    Satellite satellite = SatelliteOf(element);
    for (const Index one : Transponders(element, kBandNames[0])) {
      satellite.c_band.push_back(TransponderOf(one));
    }
    for (const Index one : Transponders(element, kBandNames[1])) {
      satellite.ku_band.push_back(TransponderOf(one));
    }
    catalogue.satellites.push_back(std::move(satellite));
  }
  for (const Index element : Lnbs()) catalogue.lnbs.push_back(LnbOf(element));
  return catalogue;
}

detail::DishTable SatellitePrediction::AllDishes() {
  detail::DishTable dishes;
  for (std::size_t dish = 0; dish < dishes.size(); ++dish) {
    for (const Index element : Assignments(dish)) dishes[dish].push_back(AssignmentOf(element));
  }
  return dishes;
}

}  // namespace zortunedex::kit::check

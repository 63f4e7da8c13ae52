// What the library reads of a catalogue and of the dishes, told from the file alone.
#pragma once

#include <vector>

#include "kit/check/subject/code_page_text.h"
#include "kit/satellites/catalogue.h"
#include "kit/satellites/dish_settings.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

class SatellitePrediction {
 public:
  SatellitePrediction(const markup::Document& document, CodePageText& text)
      : m_document(document), m_text(text) {}

  using Elements = std::vector<markup::Index>;
  /// The elements that are read, in the order of the lists.
  Elements Satellites() const { return InTable("SAT_TABLE", "Satellite"); }
  Elements Lnbs() const { return InTable("LNB_TABLE", "LNB"); }
  /// Of a satellite in C-Band or Ku-Band.
  Elements Transponders(markup::Index satellite, std::string_view band) const;
  /// Of a dish from 0 to 3.
  Elements Assignments(std::size_t dish) const;

  /// Without the transponders.
  Satellite SatelliteOf(markup::Index element);
  Transponder TransponderOf(markup::Index element);
  LnbType LnbOf(markup::Index element);
  DishSatellite AssignmentOf(markup::Index element);

  SatelliteCatalogue Catalogue();
  detail::DishTable AllDishes();

 private:
  class Texts;

  Elements InTable(std::string_view table, std::string_view name) const;
  std::int32_t Number(markup::Index element, std::string_view attribute) const;
  std::uint32_t UnsignedNumber(markup::Index element, std::string_view attribute) const;

  const markup::Document& m_document;
  CodePageText& m_text;
};

inline constexpr std::string_view kBandNames[] = {"C-Band", "Ku-Band"};

}  // namespace zortunedex::kit::check

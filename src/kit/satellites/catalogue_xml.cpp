#include "kit/satellites/catalogue_xml.h"

#include "kit/text/satellite_words.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

namespace {

using station_blocks::Form;

class Writer {
 public:
  void Open(const char* name) {
    Indent();
    m_xml += std::string("<") + name;
    ++m_depth;
  }
  /// Children follow.
  void EndStart() { m_xml += ">\r\n"; }
  void CloseEmpty() {
    --m_depth;
    m_xml += "/>\r\n";
  }
  void Close(const char* name) {
    --m_depth;
    Indent();
    m_xml += std::string("</") + name + ">\r\n";
  }

  template <typename Number>
  void Integer(const char* name, Number number) {
    Value(name, std::to_string(number));
  }
  void Word(const char* name, Form form, std::int32_t value) {
    Value(name, tuning_words::Text(form, value));
  }
  void Value(const char* name, const std::string& value) {
    m_xml += std::string(" ") + name + "=\"";
    for (const char c : value) {
      switch (c) {
        case '&':
          m_xml += "&amp;";
          break;
        case '<':
          m_xml += "&lt;";
          break;
        case '"':
          m_xml += "&quot;";
          break;
        default:
          m_xml += c;
      }
    }
    m_xml += '"';
  }

  std::string Take() { return std::move(m_xml); }

 private:
  void Indent() { m_xml.append(m_depth, '\t'); }

  std::string m_xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
  std::size_t m_depth = 0;
};

void WriteTransponder(Writer& writer, const Transponder& transponder) {
  writer.Open("Transponder");
  writer.Value("name", transponder.name);
  writer.Integer("freq", transponder.frequency);
  writer.Word("polarisation", Form::Polarisation, transponder.polarisation);
  writer.Integer("symbolRate", transponder.symbol_rate);
  writer.Word("innerFECRate", Form::FecRate, transponder.fec_rate);
  writer.Word("modulation", Form::Modulation, transponder.modulation);
  writer.Word("spectralInversion", Form::SpectralInversion, transponder.inversion);
  writer.CloseEmpty();
}

void WriteBand(Writer& writer, ESatFreqBand band, const std::vector<Transponder>& transponders) {
  if (transponders.empty()) return;
  writer.Open(BandName(band));
  writer.EndStart();
  for (const Transponder& transponder : transponders) WriteTransponder(writer, transponder);
  writer.Close(BandName(band));
}

void WriteSatellite(Writer& writer, const Satellite& satellite, std::size_t index) {
  writer.Open("Satellite");
  writer.Integer("pos", satellite.longitude);
  writer.Value("name", satellite.name);
  writer.Value("id", satellite.id);
  writer.Value("region", RegionName(satellite.region));
  writer.Value("division", DivisionName(satellite.division));
  writer.Integer("azimuthe", satellite.azimuth);
  writer.Integer("elevation", satellite.elevation);
  writer.Integer("index", index);
  writer.EndStart();
  WriteBand(writer, SatFreqBand_CBand, satellite.c_band);
  WriteBand(writer, SatFreqBand_KuBand, satellite.ku_band);
  writer.Close("Satellite");
}

void WriteLnb(Writer& writer, const LnbType& lnb) {
  writer.Open("LNB");
  writer.Value("type", lnb.name);
  writer.Integer("lowFreq", lnb.low);
  writer.Integer("highFreq", lnb.high);
  writer.Integer("switchFreq", lnb.switch_frequency);
  writer.CloseEmpty();
}

}  // namespace

std::string CatalogueXml(const SatelliteCatalogue& catalogue) {
  constexpr const char* kRoot = "SATELLITE_INFO";  // a name of this host's own
  Writer writer;
  writer.Open(kRoot);
  writer.EndStart();
  writer.Open("SAT_TABLE");
  writer.EndStart();
  for (std::size_t i = 0; i < catalogue.satellites.size(); ++i) {
    WriteSatellite(writer, catalogue.satellites[i], i);
  }
  writer.Close("SAT_TABLE");
  writer.Open("LNB_TABLE");
  writer.EndStart();
  for (const LnbType& lnb : catalogue.lnbs) WriteLnb(writer, lnb);
  writer.Close("LNB_TABLE");
  writer.Close(kRoot);
  return writer.Take();
}

}  // namespace zortunedex::kit

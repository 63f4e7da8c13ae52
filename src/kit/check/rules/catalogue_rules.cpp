#include <map>
#include <set>

#include "kit/check/rules/other_rules.h"
#include "kit/check/rules/rewriting.h"
#include "kit/check/subject/numbers.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;

constexpr const char* kSatelliteTexts[] = {"name", "id", "region", "division"};
constexpr const char* kTransponderTexts[] = {"name", "polarisation", "innerFECRate", "modulation",
                                             "spectralInversion"};
constexpr const char* kBands[] = {"C-Band", "Ku-Band"};

class CatalogueRules {
 public:
  CatalogueRules(const Document& document, Report& report)
      : m_document(document), m_report(report) {}

  void Check() {
    CheckSeconds(m_document, 0, "SAT_TABLE", "ZT200", m_report);
    CheckSeconds(m_document, 0, "LNB_TABLE", "ZT200", m_report);
    const Index satellites = FirstChild(m_document, At(0), "SAT_TABLE");
    if (satellites != kNone) {
      CheckSatellites(ChildrenOf(m_document, satellites, "Satellite"));
    }
    const Index lnbs = FirstChild(m_document, At(0), "LNB_TABLE");
    if (lnbs == kNone) return;
    for (const Index lnb : ChildrenOf(m_document, lnbs, "LNB")) CheckLnb(lnb);
  }

 private:
  const Element& At(Index index) const { return m_document.Elements()[index]; }

  void CheckSatellites(const std::vector<Index>& satellites) {
    std::set<std::string_view> ids;
    for (std::size_t i = 0; i < satellites.size(); ++i) {
      const Index satellite = satellites[i];
      CheckIndex(satellite, std::to_string(i));
      for (const char* text : kSatelliteTexts) RequireText(satellite, text);
      const auto id = m_document.ValueOf(At(satellite), "id");
      if (id && !ids.insert(*id).second) {
        m_report.Add("ZT204", satellite, *m_document.Find(At(satellite), "id"),
                     "another satellite has this id");
      }
      for (const char* band : kBands) CheckBand(satellite, band);
    }
    if (!satellites.empty()) RequireLastBand(satellites.back());
  }

  void CheckIndex(Index satellite, const std::string& wanted) {
    const markup::Attribute* index = m_document.Find(At(satellite), "index");
    if (index != nullptr && m_document.ValueOf(*index) == wanted) return;
    const std::string text = "the satellite stands at place " + wanted;
    Finding& finding = index != nullptr ? m_report.Add("ZT201", satellite, *index, text)
                                        : m_report.Add("ZT201", satellite, text);
    finding.edits = SetValue(m_document, At(satellite), "index", wanted);
  }

  void RequireText(Index element, const char* attribute) {
    if (m_document.Find(At(element), attribute) != nullptr) return;
    Finding& finding = m_report.Add(
        "ZT202", element, std::string(attribute) + " is missing: the text before it is taken");
    finding.attribute = attribute;
    finding.edits = SetValue(m_document, At(element), attribute, "");
  }

  // Loading answers what the last look for a band answered.
  void RequireLastBand(Index satellite) {
    if (FirstChild(m_document, At(satellite), "Ku-Band") != kNone) return;
    m_report.Add("ZT203", satellite, "the last satellite has no Ku-Band: loading fails").edits =
        Append(m_document, At(satellite), "<Ku-Band/>");
  }

  void CheckBand(Index satellite, const char* band) {
    CheckSeconds(m_document, satellite, band, "ZT200", m_report);
    const Index element = FirstChild(m_document, At(satellite), band);
    if (element == kNone) return;
    std::set<std::string> seen;
    for (const Index transponder : ChildrenOf(m_document, element, "Transponder")) {
      for (const char* text : kTransponderTexts) RequireText(transponder, text);
      CheckPlace(transponder, band);
      if (!seen.insert(ValuesOf(transponder)).second) {
        m_report.Add("ZT204", transponder, "the same transponder stands there twice");
      }
    }
  }

  std::string ValuesOf(Index transponder) const {
    std::string values;
    for (const char* attribute : {"name", "freq", "polarisation", "symbolRate", "innerFECRate",
                                  "modulation", "spectralInversion"}) {
      values += m_document.ValueOf(At(transponder), attribute).value_or("");
      values += '\0';
    }
    return values;
  }

  void CheckPlace(Index transponder, std::string_view band) {
    const markup::Attribute* frequency = m_document.Find(At(transponder), "freq");
    if (frequency == nullptr) return;
    const std::uint32_t value = Unsigned(ReadNumber(m_document.ValueOf(*frequency)).value);
    const bool isC = value >= 3'400'000 && value <= 4'800'000;
    const bool isKu = value >= 10'700'000 && value <= 12'750'000;
    if ((band == kBands[0] && isKu) || (band == kBands[1] && isC)) {
      m_report.Add("ZT204", transponder, *frequency, "the frequency is in the other band");
    }
  }

  void CheckLnb(Index lnb) {
    if (m_document.Find(At(lnb), "type") == nullptr) RequireText(lnb, "type");
    const std::uint32_t low = Number(lnb, "lowFreq");
    const std::uint32_t high = Number(lnb, "highFreq");
    const std::uint32_t switchAt = Number(lnb, "switchFreq");
    if (high < low) m_report.Add("ZT205", lnb, "the high oscillator is below the low one");
    // It is a frequency of the satellite, above those that the oscillators bring it down from.
    constexpr std::uint32_t kLowest = 2'500'000;
    constexpr std::uint32_t kHighest = 22'200'000;
    if (switchAt != 0 && (switchAt < kLowest || switchAt > kHighest)) {
      m_report.Add("ZT205", lnb, "no satellite signal is at the switch frequency");
    }
  }

  std::uint32_t Number(Index element, const char* attribute) const {
    return Unsigned(NumberOf(m_document, element, attribute));
  }

  const Document& m_document;
  Report& m_report;
};

}  // namespace

void CheckCatalogue(const Document& document, Report& report) {
  if (!document.Elements().empty()) CatalogueRules(document, report).Check();
}

}  // namespace zortunedex::kit::check

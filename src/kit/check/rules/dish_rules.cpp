#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "kit/check/rules/other_rules.h"
#include "kit/check/rules/rewriting.h"
#include "kit/check/subject/numbers.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;

constexpr const char* kDishes[] = {"DISH_1", "DISH_2", "DISH_3", "DISH_4"};
constexpr const char* kFigures[] = {"LNB_Low", "LNB_High", "LNB_Switch"};

using Figures = std::array<std::int32_t, 3>;

/// How many letters have to be changed; of long texts the beginning is looked at.
std::size_t Distance(std::string_view a, std::string_view b) {
  constexpr std::size_t kMost = 60;
  a = a.substr(0, kMost);
  b = b.substr(0, kMost);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = std::exchange(row[j], std::min({changed, row[j] + 1, row[j - 1] + 1}));
    }
  }
  return row.back();
}

/// What a catalogue says about the assignments.
class KnownSatellites {
 public:
  explicit KnownSatellites(const Document& document) {
    if (document.Elements().empty()) return;
    const Element& root = document.Elements()[0];
    const Index satellites = FirstChild(document, root, "SAT_TABLE");
    if (satellites != kNone) {
      for (const Index satellite : ChildrenOf(document, satellites, "Satellite")) {
        const auto id = document.ValueOf(document.Elements()[satellite], "id");
        if (id) m_positions.emplace(*id, NumberOf(document, satellite, "pos"));
      }
    }
    const Index lnbs = FirstChild(document, root, "LNB_TABLE");
    if (lnbs == kNone) return;
    for (const Index lnb : ChildrenOf(document, lnbs, "LNB")) {
      m_lnbs.insert({NumberOf(document, lnb, "lowFreq"), NumberOf(document, lnb, "highFreq"),
                     NumberOf(document, lnb, "switchFreq")});
    }
  }

  /// Nothing for a satellite that the catalogue lacks.
  std::optional<std::int32_t> PositionOf(std::string_view id) const {
    const auto found = m_positions.find(id);
    return found == m_positions.end() ? std::nullopt : std::optional(found->second);
  }
  std::string Nearest(std::string_view id) const {
    const auto nearest = std::ranges::min_element(
        m_positions, {}, [id](const auto& one) { return Distance(id, one.first); });
    return nearest == m_positions.end() ? std::string() : std::string(nearest->first);
  }
  bool HasLnbs() const { return !m_lnbs.empty(); }
  bool HasLnb(const Figures& figures) const { return m_lnbs.contains(figures); }

 private:
  std::map<std::string_view, std::int32_t> m_positions;
  std::set<Figures> m_lnbs;
};

class DishRules {
 public:
  DishRules(const Document& document, const Document* catalogue, Report& report)
      : m_document(document), m_report(report) {
    if (catalogue != nullptr) m_known.emplace(*catalogue);
  }

  void Check() {
    CheckSeconds(m_document, 0, "SAT_SETTING", "ZT221", m_report);
    const Index setting = FirstChild(m_document, At(0), "SAT_SETTING");
    if (setting == kNone) return ReportMissing(0, "<SAT_SETTING/>", "SAT_SETTING");
    for (const char* name : kDishes) {
      CheckSeconds(m_document, setting, name, "ZT221", m_report);
      const Index dish = FirstChild(m_document, At(setting), name);
      if (dish == kNone) {
        ReportMissing(setting, "<" + std::string(name) + "/>", name);
      } else {
        CheckDish(dish);
      }
    }
  }

  /// Positions of DVB-S channels that no assigned satellite has.
  void CheckReceived(const Document& channels) {
    if (!m_known || channels.Elements().empty()) return;
    std::map<std::int32_t, std::size_t> missing;
    for (const ChannelGroup& group : ReadTree(channels, ChannelFile::Channels).groups) {
      if (group.signal != InputSignalDVBSatellite || !group.isRead) continue;
      for (const Index channel : group.channels) {
        const auto position = PositionOf(channels, channel);
        if (position && !IsReceived(*position)) ++missing[*position];
      }
    }
    for (const auto& [position, count] : missing) {
      m_report.Add("ZT226", 0,
                   std::to_string(count) + " satellite channels at " + std::to_string(position) +
                       " tenths of a degree: no dish receives them");
    }
  }

 private:
  const Element& At(Index index) const { return m_document.Elements()[index]; }

  void ReportMissing(Index parent, const std::string& element, const char* name) {
    m_report
        .Add("ZT220", parent, std::string(name) + " is missing: assignments to it cannot be saved")
        .edits = Append(m_document, At(parent), element);
  }

  void CheckDish(Index dish) {
    std::set<std::string> seen;
    for (const Index assignment : ChildrenOf(m_document, dish, "SAT")) {
      CheckAssignment(assignment);
      if (seen.insert(PathOf(assignment)).second) continue;
      m_report.Add("ZT224", assignment, "the dish has this assignment already").edits = {
          Removal(m_document, At(assignment))};
    }
  }

  std::string TextOf(Index element, const char* attribute) const {
    return std::string(m_document.ValueOf(At(element), attribute).value_or(""));
  }

  /// The selection by which saving looks for an assignment.
  std::string PathOf(Index assignment) const {
    std::string path =
        "./SAT[@id='" + TextOf(assignment, "id") + "'][@band='" + TextOf(assignment, "band") + "']";
    for (const char* figure : kFigures) {
      path += "[@" + std::string(figure) + "='" +
              std::to_string(NumberOf(m_document, assignment, figure)) + "']";
    }
    return path;
  }

  Finding& Report(const char* code, Index element, const char* attribute, const std::string& text) {
    const markup::Attribute* found = m_document.Find(At(element), attribute);
    return found != nullptr ? m_report.Add(code, element, *found, text)
                            : m_report.Add(code, element, text);
  }

  void CheckAssignment(Index assignment) {
    const std::string id = TextOf(assignment, "id");
    const std::string band = TextOf(assignment, "band");
    if (m_known) CheckKnown(assignment, id);
    if (band != "C-Band" && band != "Ku-Band") {
      Report("ZT223", assignment, "band", "no band has this name");
    }
    constexpr std::size_t kMostBytes = 259;
    const bool isQuoted =
        id.find('\'') != std::string::npos || band.find('\'') != std::string::npos;
    if (isQuoted || PathOf(assignment).size() > kMostBytes) {
      m_report.Add("ZT225", assignment, "saving does not find this again and appends it each time");
    }
  }

  void CheckKnown(Index assignment, const std::string& id) {
    const auto position = m_known->PositionOf(id);
    if (position) {
      m_received.insert(*position);
    } else {
      // A file that has nothing right is not looked through over and over.
      constexpr int kMostSearches = 20;
      const std::string nearest =
          ++m_searches <= kMostSearches ? m_known->Nearest(id) : std::string();
      Report("ZT222", assignment, "id",
             "the catalogue has no such satellite" +
                 (nearest.empty() ? "" : "; the nearest id is " + nearest));
    }
    Figures figures{};
    for (std::size_t i = 0; i < figures.size(); ++i) {
      figures[i] = NumberOf(m_document, assignment, kFigures[i]);
    }
    if (m_known->HasLnbs() && !m_known->HasLnb(figures)) {
      m_report.Add("ZT223", assignment, "no LNB type of the catalogue has these frequencies");
    }
  }

  static std::optional<std::int32_t> PositionOf(const Document& channels, Index channel) {
    const Index params = FirstChild(channels, channels.Elements()[channel], "SatelliteParams");
    if (params == kNone) return std::nullopt;
    const std::int32_t position = NumberOf(channels, params, "orbitalPosition");
    return NumberOf(channels, params, "westPosition") == 1 ? -position : position;
  }

  /// Satellites of one place stand some tenths of a degree apart.
  bool IsReceived(std::int32_t position) const {
    constexpr std::int32_t kApart = 3;
    const auto nearest = m_received.lower_bound(position - kApart);
    return nearest != m_received.end() && *nearest <= position + kApart;
  }

  const Document& m_document;
  check::Report& m_report;
  std::optional<KnownSatellites> m_known;
  std::set<std::int32_t> m_received;
  int m_searches = 0;
};

}  // namespace

void CheckDishes(const Document& document, const Document* catalogue, const Document* channels,
                 Report& report) {
  if (document.Elements().empty()) return;
  DishRules rules(document, catalogue, report);
  rules.Check();
  if (channels != nullptr) rules.CheckReceived(*channels);
}

}  // namespace zortunedex::kit::check

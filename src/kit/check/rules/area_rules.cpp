#include <map>
#include <set>

#include "kit/check/rules/other_rules.h"
#include "kit/check/rules/rewriting.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;

class AreaRules {
 public:
  AreaRules(const Document& document, const ChannelTree& tree, Report& report)
      : m_document(document), m_tree(tree), m_report(report) {}

  void Check() {
    bool isThere = false;
    for (const CountryNode& country : m_tree.countries) {
      for (const Keyed& set : country.sets) {
        const bool isPlace = country.key == 81 && set.key == InputSignalISDBTerrestrialOneSeg;
        isThere = isThere || isPlace;
        isPlace ? CheckSet(set) : CheckPlace(set.element);
      }
    }
    if (!isThere) m_report.Add("ZT240", 0, "the file has no set of country 81 and signal 176");
  }

 private:
  const Element& At(Index index) const { return m_document.Elements()[index]; }

  void CheckPlace(Index set) {
    if (ChildrenOf(m_document, set, "Area").empty()) return;
    m_report.Add("ZT240", set, "presets are looked for under country 81, signal 176 alone");
  }

  void CheckSet(const Keyed& set) {
    const std::vector<Index> areas = ChildrenOf(m_document, set.element, "Area");
    const std::set<std::int32_t> numbers = CheckNumbers(areas, "AreaIndex");
    const auto customer = static_cast<std::int32_t>(areas.size()) - 1;
    if (!numbers.contains(customer)) {
      m_report.Add("ZT242", set.element,
                   "no area has the number " + std::to_string(customer) +
                       ": customer lists cannot be stored");
    }
    for (const Index area : areas) {
      const std::int32_t number = NumberOf(m_document, area, "AreaIndex");
      const auto lists = CheckNumbers(ChildrenOf(m_document, area, "SubArea"), "SubAreaIndex");
      // Of two with the same number the first is meant.
      m_lists.emplace(number, lists);
    }
    CheckSelection(set.element);
  }

  /// The numbers that are found, each once.
  std::set<std::int32_t> CheckNumbers(const std::vector<Index>& elements, const char* key) {
    std::set<std::int32_t> numbers;
    for (const Index element : elements) {
      const Attribute* attribute = m_document.Find(At(element), key);
      if (attribute == nullptr) continue;
      if (numbers.insert(NumberOf(m_document, element, key)).second) continue;
      m_report.Add("ZT241", element, *attribute, "another one has this number, and is meant");
    }
    return numbers;
  }

  void CheckSelection(Index set) {
    const std::int32_t area = NumberOf(m_document, set, "Area");
    const std::int32_t subArea = NumberOf(m_document, set, "SubArea");
    if (area == 0 && subArea == 0) return;
    const auto lists = m_lists.find(area);
    const bool isList = lists != m_lists.end() && lists->second.contains(subArea);
    const bool isShort = (area & 0xFFFF) == area && (subArea & 0xFFFF) == subArea;
    if (isList && isShort) return;
    Finding& finding = m_report.Add("ZT243", set, "the selection names no list");
    finding.attribute = "Area";
    finding.value = std::to_string(area) + "/" + std::to_string(subArea);
    finding.edits = SetValue(m_document, At(set), "Area", "0");
    const EditList second = SetValue(m_document, At(set), "SubArea", "0");
    finding.edits.insert(finding.edits.end(), second.begin(), second.end());
  }

  const Document& m_document;
  const ChannelTree& m_tree;
  Report& m_report;
  std::map<std::int32_t, std::set<std::int32_t>> m_lists;
};

}  // namespace

void CheckAreas(const Document& document, const ChannelTree& tree, Report& report) {
  if (!document.Elements().empty()) AreaRules(document, tree, report).Check();
}

}  // namespace zortunedex::kit::check

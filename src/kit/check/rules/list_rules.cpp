#include <algorithm>
#include <map>
#include <utility>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/check/rules/services.h"

namespace check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;

class ListRules {
 public:
  ListRules(const Subject& subject, const ChannelGroup& group)
      : m_subject(subject),
        m_document(subject.document),
        m_group(group),
        m_indexes(IndexesOf(subject.document, group)) {}

  void Check() {
    if (!CheckIndexes()) CheckGaps();
    CheckServices();
  }

 private:
  const Element& At(std::size_t place) const {
    return m_document.Elements()[m_group.channels[place]];
  }

  /// The list in its order, numbered from 1, and its elements in that order.
  EditList Renumbered() const {
    const std::vector<std::size_t> order = ListOrder(m_indexes);
    std::vector<Index> sorted;
    std::vector<EditList> inside;
    for (std::size_t i = 0; i < order.size(); ++i) {
      sorted.push_back(m_group.channels[order[i]]);
      const std::uint32_t index = static_cast<std::uint32_t>(i + 1);
      const auto text = m_document.ValueOf(At(order[i]), "index");
      const std::string wanted = std::to_string(index);
      inside.push_back(text == wanted ? EditList{}
                                      : SetValue(m_document, At(order[i]), "index", wanted));
    }
    return Reorder(m_document, m_group.channels, sorted, inside);
  }

  Finding& Report(const char* code, std::size_t place, const std::string& text) {
    const Attribute* index = m_document.Find(At(place), "index");
    const Index element = m_group.channels[place];
    return index != nullptr ? m_subject.report.Add(code, element, *index, text)
                            : m_subject.report.Add(code, element, text);
  }

  /// The first finding numbers the whole list; the others are mended by it.
  void Note(Finding& finding) {
    if (m_isReported) {
      finding.edits.clear();
    } else {
      finding.edits = Renumbered();
    }
    m_isReported = true;
  }

  /// True when an index is not to be used.
  bool CheckIndexes() {
    std::map<std::uint32_t, std::size_t> seen;
    for (std::size_t i = 0; i < m_indexes.size(); ++i) {
      const Attribute* attribute = m_document.Find(At(i), "index");
      const Number number = attribute ? ReadNumber(m_document.ValueOf(*attribute)) : Number{};
      const bool isNumber = attribute != nullptr && number.spelling != Spelling::OtherText;
      if (!isNumber || m_indexes[i] == 0 || m_indexes[i] == UINT32_MAX) {
        Note(Report("ZT061", i, "the channel has no index that a host can use"));
      } else if (!seen.emplace(m_indexes[i], i).second) {
        Note(Report("ZT060", i,
                    "index " + std::to_string(m_indexes[i]) +
                        " stands there twice: the next save keeps one of the channels"));
      } else if (number.spelling != Spelling::Plain) {
        CheckSpelling(i, *attribute);
      }
    }
    return m_isReported;
  }

  void CheckSpelling(std::size_t place, const Attribute& attribute) {
    const std::string usual = std::to_string(static_cast<std::int32_t>(m_indexes[place]));
    Finding& finding = Report("ZT042", place, "the index is looked for as \"" + usual + "\"");
    finding.edits = SetValue(attribute, usual);
  }

  void CheckGaps() {
    std::vector<std::uint32_t> sorted = m_indexes;
    std::ranges::sort(sorted);
    const bool isDense = sorted.empty() || (sorted.front() == 1 && sorted.back() == sorted.size());
    m_isDense = isDense && std::ranges::is_sorted(m_indexes);
    if (m_isDense) return;
    Finding& finding = m_subject.report.Add(
        "ZT062", m_group.holder,
        isDense ? "the channels do not stand in the order of their indexes"
                : "the indexes have gaps: stepping takes index n to stand at place n");
    finding.edits = Renumbered();
  }

  void CheckServices() {
    std::map<std::string, std::vector<std::size_t>> byService;
    for (std::size_t i = 0; i < m_group.channels.size(); ++i) {
      const std::string identity = ServiceIdentity(m_document, m_group.channels[i], m_group.signal);
      if (!identity.empty()) byService[identity].push_back(i);
    }
    std::map<std::size_t, std::string> repeated;
    for (const auto& [identity, places] : byService) {
      if (places.size() < 2) continue;
      const auto favorite =
          std::ranges::find_if(places, [this](std::size_t place) { return IsFavorite(place); });
      const std::size_t kept = favorite == places.end() ? places.front() : *favorite;
      for (const std::size_t place : places) {
        if (place != kept) repeated.emplace(place, identity);
      }
    }
    EditList edits = WithoutChannels(repeated);
    for (const auto& [place, identity] : repeated) {
      Finding& finding = m_subject.report.Add("ZT070", m_group.channels[place],
                                              "the service " + identity + " stands there twice");
      finding.value = identity;
      finding.edits = std::exchange(edits, {});
    }
  }

  bool IsFavorite(std::size_t place) const {
    const auto text = m_document.ValueOf(At(place), "favor");
    return text && ReadNumber(*text).value != 0;
  }

  /// Removes channels; what is numbered without gaps stays so.
  EditList WithoutChannels(const std::map<std::size_t, std::string>& gone) const {
    EditList edits;
    std::size_t next = 1;
    for (std::size_t i = 0; i < m_group.channels.size(); ++i) {
      if (gone.contains(i)) {
        edits.push_back(Removal(m_document, At(i)));
      } else if (m_isDense && next++ != m_indexes[i]) {
        const EditList one = SetValue(m_document, At(i), "index", std::to_string(next - 1));
        edits.insert(edits.end(), one.begin(), one.end());
      }
    }
    return edits;
  }

  const Subject& m_subject;
  const Document& m_document;
  const ChannelGroup& m_group;
  std::vector<std::uint32_t> m_indexes;
  bool m_isReported = false;
  bool m_isDense = false;  ///< 1, 2, 3 … in the order of the file
};

}  // namespace

void CheckLists(const Subject& subject) {
  for (const ChannelGroup& group : subject.tree.groups) {
    if (group.layout != nullptr) ListRules(subject, group).Check();
  }
}

}  // namespace check

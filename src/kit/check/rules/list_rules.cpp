#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <utility>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/check/rules/services.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;

class ListRules : public ChannelRules {
 public:
  ListRules(const Subject& subject, const ChannelGroup& group)
      : m_subject(subject), m_document(subject.document), m_group(group) {
    m_indexes.reserve(group.channels.size());
    m_spellings.reserve(group.channels.size());
    m_services.reserve(group.channels.size());
  }

  void Check(Index channel) override {
    const auto text = m_document.ValueOf(m_document.Elements()[channel], "index");
    const Number index = text ? ReadNumber(*text) : Number{};
    std::string identity = ServiceIdentity(m_document, channel, m_group.signal);
    if (!identity.empty()) m_services.emplace_back(std::move(identity), m_indexes.size());
    m_indexes.push_back(Unsigned(index.value));
    m_spellings.push_back(index.spelling);
  }

  void Finish() override {
    m_sorted = m_indexes;
    std::ranges::sort(m_sorted);
    if (!CheckIndexes()) CheckGaps();
    CheckServices();
  }

 private:
  /// Its identity, and the place of a channel that has it.
  using Service = std::pair<std::string, std::size_t>;

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
    const bool areDifferent = std::ranges::adjacent_find(m_sorted) == m_sorted.end();
    std::set<std::uint32_t> seen;
    for (std::size_t i = 0; i < m_indexes.size(); ++i) {
      const bool isNumber = m_spellings[i] != Spelling::OtherText;
      if (!isNumber || m_indexes[i] == 0 || m_indexes[i] == UINT32_MAX) {
        Note(Report("ZT061", i, "the channel has no index that a host can use"));
      } else if (!areDifferent && !seen.insert(m_indexes[i]).second) {
        Note(Report("ZT060", i,
                    "index " + std::to_string(m_indexes[i]) +
                        " stands there twice: the next save keeps one of the channels"));
      } else if (m_spellings[i] != Spelling::Plain) {
        ReportSpelling(i);
      }
    }
    return m_isReported;
  }

  void ReportSpelling(std::size_t place) {
    const std::string usual = std::to_string(static_cast<std::int32_t>(m_indexes[place]));
    Finding& finding = Report("ZT042", place, "the index is looked for as \"" + usual + "\"");
    finding.edits = SetValue(m_document, At(place), "index", usual);
  }

  void CheckGaps() {
    const bool isDense =
        m_sorted.empty() || (m_sorted.front() == 1 && m_sorted.back() == m_sorted.size());
    m_isDense = isDense && std::ranges::is_sorted(m_indexes);
    if (m_isDense) return;
    Finding& finding = m_subject.report.Add(
        "ZT062", m_group.holder,
        isDense ? "the channels do not stand in the order of their indexes"
                : "the indexes have gaps: stepping takes index n to stand at place n");
    finding.edits = Renumbered();
  }

  void CheckServices() {
    std::ranges::sort(m_services);
    std::map<std::size_t, std::string> repeated;
    for (auto first = m_services.begin(); first != m_services.end();) {
      const auto last = std::find_if(first, m_services.end(), [first](const Service& one) {
        return one.first != first->first;
      });
      if (last - first > 1) NoteRepeated({first, last}, repeated);
      first = last;
    }
    EditList edits = WithoutChannels(repeated);
    for (const auto& [place, identity] : repeated) {
      Finding& finding = m_subject.report.Add("ZT070", m_group.channels[place],
                                              "the service " + identity + " stands there twice");
      finding.value = identity;
      finding.edits = std::exchange(edits, {});
    }
  }

  /// Of several channels with one service a favourite one stays, or the first.
  void NoteRepeated(std::span<const Service> same, std::map<std::size_t, std::string>& repeated) {
    const auto favorite =
        std::ranges::find_if(same, [this](const Service& one) { return IsFavorite(one.second); });
    const std::size_t kept = favorite == same.end() ? same.front().second : favorite->second;
    for (const auto& [identity, place] : same) {
      if (place != kept) repeated.emplace(place, identity);
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
  // Of every channel.
  std::vector<std::uint32_t> m_indexes;
  std::vector<Spelling> m_spellings;
  std::vector<Service> m_services;  ///< of those that have one
  std::vector<std::uint32_t> m_sorted;
  bool m_isReported = false;
  bool m_isDense = false;  ///< 1, 2, 3 … in the order of the file
};

}  // namespace

ChannelRulesPtr MakeListRules(const Subject& subject, const ChannelGroup& group) {
  return std::make_unique<ListRules>(subject, group);
}

}  // namespace zortunedex::kit::check

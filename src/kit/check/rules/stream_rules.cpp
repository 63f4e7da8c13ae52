#include <algorithm>
#include <bitset>
#include <map>
#include <optional>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"
#include "kit/check/subject/lookups.h"
#include "kit/check/subject/schema.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;
using station_blocks::Layout;
using station_blocks::StreamList;

constexpr std::uint32_t kMostPid = 8191;
constexpr std::uint32_t kLastTablePid = 15;

class StreamRules : public ChannelRules {
 public:
  StreamRules(const Subject& subject, const ChannelGroup& group)
      : m_subject(subject),
        m_document(subject.document),
        m_layout(*group.layout),
        m_signal(group.signal) {
    for (const char* address : {"PcrPID", "VideoPID", "AudioPID", "EsgPID"}) {
      if (station_blocks::FindField(m_layout.channel, address) != nullptr) {
        m_addresses.push_back(address);
      }
    }
    for (const StreamList& list : m_layout.lists) {
      m_lists.push_back({&list, schema::CountFieldsOf(m_layout, list.countOffset)});
    }
  }

  void Check(Index channel) override {
    m_channel = channel;
    m_pids.reset();
    CheckAddresses();
    if (m_layout.elementStreams.Empty()) return;
    m_streams = FirstChild(m_document, At(m_channel), "ElementStreams");
    if (m_streams == kNone) return;
    for (ListCount& list : m_lists) list.elements = 0;
    std::vector<Index> components;
    for (Index i = At(m_streams).firstChild; i != kNone; i = At(i).next) {
      const std::string_view name = m_document.NameOf(At(i));
      if (const StreamList* list = schema::ListOf(m_layout, name)) {
        ++m_lists[static_cast<std::size_t>(list - m_layout.lists.begin())].elements;
        CheckEntry(i);
      } else if (m_layout.components != nullptr && name == "Components") {
        components.push_back(i);
      }
    }
    AttributeLookup values(m_document, At(m_streams));
    for (const ListCount& list : m_lists) {
      CheckCount(values, list.fields, list.elements, list.list->capacity, list.list->element);
    }
    if (m_layout.components != nullptr) CheckComponents(values, components);
  }

 private:
  struct ListCount {
    const StreamList* list;
    schema::CountFields fields;
    std::uint32_t elements = 0;  ///< of the channel that is looked at
  };

  const Element& At(Index index) const { return m_document.Elements()[index]; }

  static std::optional<std::uint32_t> Read(AttributeLookup& element, const char* attribute) {
    const auto text = element.ValueOf(attribute);
    return text ? std::optional(Unsigned(ReadNumber(*text).value)) : std::nullopt;
  }

  Finding& Report(const char* code, Index element, std::string_view attribute,
                  const std::string& text) {
    const Attribute* found = m_document.Find(At(element), attribute);
    if (found != nullptr) return m_subject.report.Add(code, element, *found, text);
    Finding& finding = m_subject.report.Add(code, element, text);
    finding.attribute = std::string(attribute);
    return finding;
  }

  void CheckCount(AttributeLookup& values, const schema::CountFields& fields,
                  std::uint32_t children, std::uint32_t capacity, const char* name) {
    if (fields.count == nullptr) return;
    if (fields.selected != nullptr) {
      CheckSelection(values, fields.selected->attribute, std::min(children, capacity));
    }
    if (children > capacity) {
      m_subject.report.Add("ZT082", m_streams,
                           std::to_string(children) + " " + name + " elements, of which " +
                               std::to_string(capacity) + " can be read");
    } else {
      const char* attribute = fields.count->attribute;
      const std::uint32_t count = Read(values, attribute).value_or(0);
      if (count != children) ReportCount(attribute, count, children, name);
    }
  }

  void CheckSelection(AttributeLookup& values, const char* attribute, std::uint32_t streams) {
    const std::uint32_t selection = Read(values, attribute).value_or(0);
    if (selection == 0 || selection < streams) return;
    Report("ZT083", m_streams, attribute, "there is no such stream").edits =
        SetValue(m_document, At(m_streams), attribute, "0");
  }

  void ReportCount(const char* attribute, std::uint32_t count, std::uint32_t children,
                   const char* name) {
    const std::string there = std::to_string(children) + " of " + name +
                              (children == 1 ? " stands" : " stand") + " there: ";
    const bool isAbove = count > children;
    Finding& finding = Report(isAbove ? "ZT080" : "ZT081", m_streams, attribute,
                              there + (isAbove ? "the next save invents the rest"
                                               : "the next save drops those beyond the count"));
    finding.edits = SetValue(m_document, At(m_streams), attribute, std::to_string(children));
  }

  void CheckEntry(Index entry) {
    AttributeLookup values(m_document, At(entry));
    if (const auto pid = Read(values, "pid")) CheckPid(entry, "pid", *pid, true);
    const auto language = Read(values, "lang");
    if (!language || *language <= 0xFFF) return;
    Report("ZT086", entry, "lang", "only the low twelve bits are kept").edits =
        SetValue(m_document, At(entry), "lang", std::to_string(*language & 0xFFF));
  }

  void CheckPid(Index element, const char* attribute, std::uint32_t pid, bool isStream) {
    if (pid > kMostPid) {
      Report("ZT084", element, attribute, "there is no PID above 8191");
    } else if (!isStream) {
      return;
    } else if (pid <= kLastTablePid || pid == kMostPid) {
      Report("ZT085", element, attribute, "no stream has this PID");
    } else if (m_signal != InputSignalDVBHandheld && m_pids.test(pid)) {
      Report("ZT085", element, attribute, "another stream of the channel has this PID");
    } else {
      m_pids.set(pid);
    }
  }

  /// PIDs of the channel itself: none is 0.
  void CheckAddresses() {
    AttributeLookup values(m_document, At(m_channel));
    for (const char* attribute : m_addresses) {
      const auto pid = Read(values, attribute);
      if (pid) CheckPid(m_channel, attribute, *pid, false);
    }
  }

  void CheckComponents(AttributeLookup& values, const std::vector<Index>& components) {
    const std::uint32_t capacity = m_layout.components->capacity;
    std::uint32_t count = 0;
    std::map<std::uint32_t, Index> seen;
    for (const Index component : components) {
      AttributeLookup ofComponent(m_document, At(component));
      const auto id = Read(ofComponent, "ID");
      if (!id || *id >= capacity) {
        Report("ZT087", component, "ID", "a component has a place from 0 to 7");
      } else if (!seen.emplace(*id, component).second) {
        Report("ZT087", component, "ID", "another component has this place");
      }
      if (id && *id < capacity) count = std::max(count, *id + 1);
      CheckComponentName(component);
    }
    CheckCount(values, schema::CountFieldsOf(m_layout, m_layout.components->countOffset), count,
               capacity, "Components");
  }

  void CheckComponentName(Index component) {
    const auto name = m_document.ValueOf(At(component), "name");
    if (!name || m_subject.text.Of(*name).bytes.size() < m_layout.components->nameWidth) return;
    Report("ZT087", component, "name", "a component's name has room for 7 bytes");
  }

  const Subject& m_subject;
  const Document& m_document;
  const Layout& m_layout;
  InputSignalType m_signal;
  std::vector<const char*> m_addresses;
  std::vector<ListCount> m_lists;
  // Of the channel that is looked at.
  Index m_channel = kNone;
  Index m_streams = kNone;
  std::bitset<kMostPid + 1> m_pids;
};

}  // namespace

ChannelRulesPtr MakeStreamRules(const Subject& subject, const ChannelGroup& group) {
  return std::make_unique<StreamRules>(subject, group);
}

}  // namespace zortunedex::kit::check

#include "kit/history/comparison/element_changes.h"

#include <array>
#include <map>

#include "kit/files/file_scan.h"

namespace zortunedex::kit::history {
namespace {

using file_scan::Attribute;
using file_scan::Tag;

/// How an element is told from its siblings, and what it is called.
struct ElementName {
  std::string_view tag;
  const char* word;
  std::array<const char*, 2> attributes;
};

constexpr ElementName kNames[] = {
    {"SAT", "satellite", {"id", "band"}},
    {"Satellite", "satellite", {"id", nullptr}},
    {"Transponder", "transponder", {"name", nullptr}},
    {"LNB", "LNB type", {"type", nullptr}},
    {"Country", "country", {"countrycode", nullptr}},
    {"ChannelSet", "list", {"inputSignalType", nullptr}},
    {"Area", "area", {"AreaIndex", "name"}},
    {"SubArea", "sub-area", {"SubAreaIndex", "name"}},
    {"Channel", "channel", {"index", nullptr}},
};
/// Elements that hold others and say nothing.
constexpr std::string_view kFrames[] = {"USER_SETTINGS", "SAT_SETTING", "SATELLITE_INFO",
                                        "SAT_TABLE",     "LNB_TABLE",   "CHANNELTABLE"};
constexpr std::string_view kDish = "DISH_";

std::string LabelOf(const Tag& tag) {
  for (const std::string_view frame : kFrames) {
    if (tag.name == frame) return {};
  }
  if (tag.name.starts_with(kDish)) {
    return "dish " + std::string(tag.name.substr(kDish.size()));
  }
  for (const ElementName& name : kNames) {
    if (tag.name != name.tag) continue;
    std::string label = name.word;
    for (const char* attribute : name.attributes) {
      const std::string* value = attribute == nullptr ? nullptr : tag.Find(attribute);
      if (value != nullptr && !value->empty()) label += " " + *value;
    }
    return label;
  }
  return std::string(tag.name);
}

struct Element {
  std::string path;
  std::string parent;  ///< its path
  std::vector<Attribute> attributes;
};

/// The elements of a text in their order. Equal ones are told apart by their number.
class Elements {
 public:
  explicit Elements(std::string_view xml) : m_xml(xml) {
    file_scan::ForEachTag(m_xml, [this](const Tag& tag) { Take(tag); });
  }

  const std::vector<Element>& InOrder() const { return m_elements; }
  const Element* Find(const std::string& path) const {
    const auto found = m_places.find(path);
    return found == m_places.end() ? nullptr : &m_elements[found->second];
  }

 private:
  struct Open {
    std::string_view tag;
    std::string path;
  };

  void Take(const Tag& tag) {
    if (tag.closing) {
      if (!m_open.empty() && m_open.back().tag == tag.name) m_open.pop_back();
      return;
    }
    const std::string parent = m_open.empty() ? std::string() : m_open.back().path;
    const std::string label = LabelOf(tag);
    std::string path = parent;
    if (!label.empty()) path = Placed(parent.empty() ? label : parent + ", " + label);
    if (!label.empty()) {
      m_places[path] = m_elements.size();
      m_elements.push_back({path, parent, tag.attributes});
    }
    if (tag.hasContent) m_open.push_back({tag.name, path});
  }

  std::string Placed(const std::string& path) {
    const std::size_t number = ++m_counts[path];
    return number == 1 ? path : path + " (" + std::to_string(number) + ")";
  }

  std::string_view m_xml;
  std::vector<Element> m_elements;
  std::map<std::string, std::size_t> m_places;
  std::map<std::string, std::size_t> m_counts;
  std::vector<Open> m_open;
};

const std::string* Find(const std::vector<Attribute>& attributes, std::string_view name) {
  for (const Attribute& attribute : attributes) {
    if (attribute.name == name) return &attribute.value;
  }
  return nullptr;
}

std::vector<FieldChange> Fields(const Element& from, const Element& to) {
  std::vector<FieldChange> fields;
  for (const Attribute& now : to.attributes) {
    const std::string* before = Find(from.attributes, now.name);
    if (before != nullptr && *before == now.value) continue;
    fields.push_back({std::string(now.name), before == nullptr ? "-" : *before, now.value});
  }
  for (const Attribute& before : from.attributes) {
    if (Find(to.attributes, before.name) != nullptr) continue;
    fields.push_back({std::string(before.name), before.value, "-"});
  }
  return fields;
}

/// Elements of `here` that `there` lacks, without those inside of others.
void AddMissing(const Elements& here, const Elements& there, Kind kind,
                std::vector<Change>& changes) {
  for (const Element& element : here.InOrder()) {
    if (there.Find(element.path) != nullptr) continue;
    if (!element.parent.empty() && there.Find(element.parent) == nullptr) continue;
    changes.push_back({kind, {}, std::nullopt, element.path, {}});
  }
}

}  // namespace

std::vector<Change> ElementChanges(std::string_view from, std::string_view to) {
  const Elements before(from);
  const Elements now(to);
  std::vector<Change> changes;
  AddMissing(before, now, Kind::Removed, changes);
  AddMissing(now, before, Kind::Added, changes);
  for (const Element& element : now.InOrder()) {
    const Element* old = before.Find(element.path);
    if (old == nullptr) continue;
    std::vector<FieldChange> fields = Fields(*old, element);
    if (fields.empty()) continue;
    changes.push_back({Kind::Changed, {}, std::nullopt, element.path, std::move(fields)});
  }
  return changes;
}

}  // namespace zortunedex::kit::history

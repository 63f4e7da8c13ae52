#include "kit/check/subject/channel_tree.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string>

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;

/// Children of a name with their keys. Of those that are found the first one of a key is read.
std::vector<Keyed> KeyedChildren(const Document& document, Index parent, std::string_view name,
                                 std::string_view attribute, bool isParentRead) {
  std::vector<Keyed> children;
  std::set<std::int32_t> seen;
  for (const Index i : ChildrenOf(document, parent, name)) {
    Keyed child;
    child.element = i;
    if (const auto text = document.ValueOf(document.Elements()[i], attribute)) {
      child.key = ReadNumber(*text).value;
      child.isFound = *text == std::to_string(child.key);
    }
    child.isRead = isParentRead && child.isFound && seen.insert(child.key).second;
    children.push_back(child);
  }
  return children;
}

class TreeReader {
 public:
  TreeReader(const Document& document, ChannelFile file) : m_document(document), m_file(file) {}

  ChannelTree Read() {
    if (m_document.Elements().empty()) return {};
    for (const Keyed& child : KeyedChildren(m_document, 0, "Country", "countrycode", true)) {
      CountryNode country{child, {}};
      country.sets = KeyedChildren(m_document, country.element, "ChannelSet", "inputSignalType",
                                   country.isRead);
      for (const Keyed& set : country.sets) AddSet(country, set);
      m_tree.countries.push_back(std::move(country));
    }
    return std::move(m_tree);
  }

 private:
  static constexpr std::int32_t kPresetCountry = 81;

  void AddSet(const Keyed& country, const Keyed& set) {
    ChannelGroup group;
    group.country = country.key;
    group.signal = static_cast<InputSignalType>(set.key);
    group.layout = station_blocks::Find(group.signal);
    group.isRead = set.isRead;
    if (m_file == ChannelFile::Channels) return AddGroup(group, set.element);
    const bool isPresets =
        country.key == kPresetCountry && set.key == InputSignalISDBTerrestrialOneSeg;
    const bool isRead = group.isRead && isPresets;
    for (const Keyed& area : KeyedChildren(m_document, set.element, "Area", "AreaIndex", isRead)) {
      for (const Keyed& subArea :
           KeyedChildren(m_document, area.element, "SubArea", "SubAreaIndex", area.isRead)) {
        group.isRead = subArea.isRead;
        group.area = area.key;
        group.subArea = subArea.key;
        AddGroup(group, subArea.element);
      }
    }
  }

  void AddGroup(ChannelGroup group, Index holder) {
    group.holder = holder;
    group.channels = ChildrenOf(m_document, holder, "Channel");
    m_tree.groups.push_back(std::move(group));
  }

  const Document& m_document;
  ChannelFile m_file;
  ChannelTree m_tree;
};

}  // namespace

std::vector<Index> ChildrenOf(const Document& document, Index parent, std::string_view name) {
  const auto elements = document.Elements();
  std::vector<Index> children;
  for (Index i = elements[parent].firstChild; i != kNone; i = elements[i].next) {
    if (document.NameOf(elements[i]) == name) children.push_back(i);
  }
  return children;
}

Index FirstChild(const Document& document, const Element& parent, std::string_view name) {
  const auto elements = document.Elements();
  Index i = parent.firstChild;
  while (i != kNone && document.NameOf(elements[i]) != name) i = elements[i].next;
  return i;
}

ChannelTree ReadTree(const Document& document, ChannelFile file) {
  return TreeReader(document, file).Read();
}

std::vector<std::uint32_t> IndexesOf(const Document& document, const ChannelGroup& group) {
  std::vector<std::uint32_t> indexes;
  indexes.reserve(group.channels.size());
  for (const Index i : group.channels) {
    const auto text = document.ValueOf(document.Elements()[i], "index");
    indexes.push_back(text ? Unsigned(ReadNumber(*text).value) : 0);
  }
  return indexes;
}

std::vector<std::size_t> ListOrder(const std::vector<std::uint32_t>& indexes) {
  std::vector<std::size_t> order(indexes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
    return indexes[a] != indexes[b] ? indexes[a] < indexes[b] : a > b;
  });
  return order;
}

}  // namespace zortunedex::kit::check

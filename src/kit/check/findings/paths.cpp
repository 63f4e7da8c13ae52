#include "kit/check/findings/paths.h"

#include <unordered_map>

#include "kit/check/findings/report.h"

namespace zortunedex::kit::check {
namespace {

using markup::Element;
using markup::Index;
using markup::kNone;

struct Key {
  std::string_view element;
  std::string_view attribute;
  std::string_view label;
};

constexpr Key kKeys[] = {
    {"Country", "countrycode", ""},   {"ChannelSet", "inputSignalType", ""},
    {"Channel", "index", "index="},   {"Area", "AreaIndex", ""},
    {"SubArea", "SubAreaIndex", ""},  {"Components", "ID", "ID="},
    {"Satellite", "index", "index="},
};

constexpr std::size_t kMostKeyBytes = 40;

}  // namespace

void Paths::CountSiblings() {
  const auto elements = m_document.Elements();
  m_numbers.assign(elements.size(), 0);
  std::unordered_map<std::string_view, std::pair<std::uint32_t, Index>> seen;
  for (const Element& parent : elements) {
    seen.clear();
    for (Index i = parent.firstChild; i != kNone; i = elements[i].next) {
      auto& [count, first] = seen[m_document.NameOf(elements[i])];
      if (count++ == 0) {
        first = i;
      } else {
        m_numbers[first] = 1;
        m_numbers[i] = count;
      }
    }
  }
}

std::string Paths::Step(const Element& element, Index index) {
  const std::string_view name = m_document.NameOf(element);
  std::string step = Shown(name);
  for (const Key& key : kKeys) {
    if (key.element != name) continue;
    const auto value = m_document.ValueOf(element, key.attribute);
    if (!value) break;
    return step.append("[").append(key.label).append(Shown(value->substr(0, kMostKeyBytes))) + "]";
  }
  if (m_numbers[index] != 0) step += "[" + std::to_string(m_numbers[index]) + "]";
  return step;
}

std::string Paths::Of(Index element) {
  if (element == kNone) return {};
  if (m_numbers.empty()) CountSiblings();
  const auto elements = m_document.Elements();
  std::vector<Index> chain;
  for (Index i = element; i != kNone; i = elements[i].parent) chain.push_back(i);
  // The document element is named only when it is meant itself.
  if (chain.size() > 1) chain.pop_back();
  std::string path;
  for (auto i = chain.rbegin(); i != chain.rend(); ++i) {
    if (!path.empty()) path += '/';
    path += Step(elements[*i], *i);
  }
  return path;
}

}  // namespace zortunedex::kit::check

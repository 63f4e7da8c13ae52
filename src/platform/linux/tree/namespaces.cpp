#include "platform/linux/tree/namespaces.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/tree/store.h"

namespace domtree {
namespace {

struct SplitName {
  std::string_view prefix;
  std::string_view local;
};

SplitName Split(std::string_view name) {
  const std::size_t colon = name.find(':');
  return {name.substr(0, colon), name.substr(colon + 1)};
}

/// What the prefix stands for; none when it is not declared.
std::optional<std::string_view> Resolve(const Node& element, std::string_view prefix) {
  if (prefix == "xml") return "http://www.w3.org/XML/1998/namespace";
  const NameId declaration = element.Owner().GetNames().Find("xmlns:" + std::string(prefix));
  if (declaration == kNoName) return std::nullopt;
  for (const Node* node = &element; node; node = node->Parent()) {
    if (!node->IsElement()) break;
    if (const Attribute* found = node->FindAttribute(declaration)) return node->ValueOf(*found);
  }
  return std::nullopt;
}

bool IsDeclared(const Node& element, std::string_view name) {
  return Resolve(element, Split(name).prefix).has_value();
}

}  // namespace

bool IsNamespaceDeclaration(std::string_view name) {
  return name == "xmlns" || name.starts_with("xmlns:");
}

bool HasSoundPrefixes(const Node& element) {
  const Names& names = element.Owner().GetNames();
  if (!names.HasPrefixes()) return true;
  if (names.HasPrefix(element.Name()) && !IsDeclared(element, names.Text(element.Name()))) {
    return false;
  }
  std::vector<std::pair<std::string_view, std::string_view>> expanded;
  for (std::uint32_t i = 0; i < element.AttributeCount(); ++i) {
    const NameId id = element.At(i).Name();
    if (!names.HasPrefix(id) || IsNamespaceDeclaration(names.Text(id))) continue;
    const SplitName name = Split(names.Text(id));
    const auto meaning = Resolve(element, name.prefix);
    if (!meaning) return false;
    for (const auto& [other, local] : expanded) {
      if (other == *meaning && local == name.local) return false;
    }
    expanded.emplace_back(*meaning, name.local);
  }
  return true;
}

}  // namespace domtree

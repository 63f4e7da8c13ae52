#include "kit/xml/tree/namespaces.h"

#include <algorithm>
#include <utility>

#include "kit/xml/text/damage.h"
#include "kit/xml/tree/uri.h"

namespace zortunedex::kit::markup {
namespace {

constexpr std::string_view kXmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlnsUri = "http://www.w3.org/2000/xmlns/";
constexpr std::string_view kDeclaration = "xmlns";

std::string_view PrefixOf(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view LocalNameOf(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool IsDeclaration(std::string_view name) {
  return name == kDeclaration || PrefixOf(name) == kDeclaration;
}

}  // namespace

bool Namespaces::Enter(std::string_view element, const std::vector<Name>& attributes) {
  m_levels.push_back(m_declared.size());
  bool isGood = true;
  for (const Name& attribute : attributes) {
    if (IsDeclaration(attribute.name) && !Declare(attribute)) isGood = false;
  }
  const std::string_view prefix = PrefixOf(element);
  return isGood && (prefix.empty() || UriOf(prefix) != nullptr) && AreTold(attributes);
}

void Namespaces::Leave() {
  m_declared.resize(m_levels.back());
  m_levels.pop_back();
}

bool Namespaces::Declare(const Name& declaration) {
  const bool isDefault = declaration.name == kDeclaration;
  const std::string_view prefix = isDefault ? std::string_view() : LocalNameOf(declaration.name);
  const std::string_view uri = declaration.value;
  // This one is always in force.
  if (prefix == "xml") return uri == kXmlUri;
  if (m_declared.size() <= kMostNamespaces) m_declared.push_back({prefix, std::string(uri)});
  if (prefix == kDeclaration || uri == kXmlUri || uri == kXmlnsUri) return false;
  if (uri.empty()) return isDefault;
  return IsUriReference(uri);
}

const std::string* Namespaces::UriOf(std::string_view prefix) const {
  static const std::string xmlUri(kXmlUri);
  if (prefix == "xml") return &xmlUri;
  const auto found =
      std::find_if(m_declared.rbegin(), m_declared.rend(),
                   [prefix](const Declared& declared) { return declared.prefix == prefix; });
  return found == m_declared.rend() ? nullptr : &found->uri;
}

/// Every prefix is declared, and no two of them with the same name mean the same.
bool Namespaces::AreTold(const std::vector<Name>& attributes) const {
  std::vector<std::pair<std::string_view, std::string_view>> names;
  for (const Name& attribute : attributes) {
    const std::string_view prefix = PrefixOf(attribute.name);
    if (prefix.empty() || IsDeclaration(attribute.name)) continue;
    const std::string* uri = UriOf(prefix);
    if (uri == nullptr) return false;
    names.emplace_back(*uri, LocalNameOf(attribute.name));
  }
  std::sort(names.begin(), names.end());
  return std::adjacent_find(names.begin(), names.end()) == names.end();
}

}  // namespace zortunedex::kit::markup

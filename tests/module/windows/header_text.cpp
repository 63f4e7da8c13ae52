#include "module/windows/header_text.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace {

using Matches = std::sregex_iterator;

std::string ReadWithoutComments(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return std::regex_replace(text, std::regex("//[^\n]*"), "");
}

std::size_t CountOf(const std::string& text, const std::string& word) {
  std::size_t count = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
    ++count;
  }
  return count;
}

// Nothing of the header may be passed over.
void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error("interfaces.h: " + what + " cannot be read");
}

/// "const CHAR* name" and the like.
DeclaredParameter ParseDeclaration(const std::string& text) {
  static const std::regex kDeclaration(R"(\s*(const\s+)?(\w+)\s*(\**)\s*(\w+)\s*)");
  std::smatch match;
  Require(std::regex_match(text, match, kDeclaration), text);
  const std::string prefix = match[1].matched ? "const " : "";
  return {prefix + match[2].str() + match[3].str(), match[4].str()};
}

std::vector<DeclaredParameter> ParseList(const std::string& text, char separator) {
  std::vector<DeclaredParameter> list;
  std::size_t first = 0;
  while (text.find_first_not_of(" \r\n", first) != std::string::npos) {
    const std::size_t end = std::min(text.find(separator, first), text.size());
    list.push_back(ParseDeclaration(text.substr(first, end - first)));
    first = end + 1;
  }
  return list;
}

std::vector<DeclaredMethod> ParseMethods(const std::string& body) {
  static const std::regex kMethod(
      R"(virtual\s+HRESULT\s+STDMETHODCALLTYPE\s+(\w+)\s*\(([^)]*)\)\s*=\s*0;)");
  std::vector<DeclaredMethod> methods;
  for (Matches match(body.begin(), body.end(), kMethod), end; match != end; ++match) {
    methods.push_back({(*match)[1], ParseList((*match)[2], ',')});
  }
  Require(methods.size() == CountOf(body, "virtual"), "a method");
  return methods;
}

std::vector<std::pair<std::string, std::int64_t>> ParseValues(const std::string& body) {
  static const std::regex kValue(R"((\w+)\s*=\s*(-?\d+)\s*,)");
  std::vector<std::pair<std::string, std::int64_t>> values;
  for (Matches match(body.begin(), body.end(), kValue), end; match != end; ++match) {
    values.emplace_back((*match)[1], std::stoll((*match)[2]));
  }
  Require(values.size() == CountOf(body, "="), "an enumerator");
  return values;
}

std::string FormatIdentifier(const std::string& digits) {
  static const std::regex kDigits("0x([0-9A-F]+)");
  std::string text = "{";
  int index = 0;
  for (Matches match(digits.begin(), digits.end(), kDigits), end; match != end; ++match, ++index) {
    if (index == 1 || index == 2 || index == 3 || index == 5) text += '-';
    text += (*match)[1];
  }
  Require(index == 11 && text.size() == 37, digits);
  return text + '}';
}

}  // namespace

HeaderText::HeaderText(const std::string& path) {
  const std::string text = ReadWithoutComments(path);
  const std::regex interfaceText(R"(struct\s+(\w+)\s*:\s*public\s+IUnknown\s*\{([^}]*)\};)");
  const std::regex enumerationText(R"(enum\s+(\w+)\s*:\s*std::int32_t\s*\{([^}]*)\};)");
  const std::regex recordText(R"(struct\s+(\w+)\s*\{([^}]*)\};)");
  const std::regex identifierText(
      R"(inline\s+constexpr\s+(?:IID|CLSID|GUID)\s+(\w+)\s*=\s*\{([^}]*)\}\};)");
  const auto each = [&](const std::regex& pattern, const auto& store) {
    for (Matches match(text.begin(), text.end(), pattern), end; match != end; ++match) {
      store((*match)[1].str(), (*match)[2].str());
    }
  };
  each(interfaceText, [&](auto name, auto body) { interfaces[name] = ParseMethods(body); });
  each(enumerationText, [&](auto name, auto body) { enumerations[name] = ParseValues(body); });
  each(recordText, [&](auto name, auto body) { records[name] = ParseList(body, ';'); });
  each(identifierText, [&](auto name, auto body) { identifiers[name] = FormatIdentifier(body); });
  Require(interfaces.size() + records.size() == CountOf(text, "struct "), "a struct");
  Require(enumerations.size() == CountOf(text, "enum "), "an enumeration");
  Require(identifiers.size() == CountOf(text, "inline constexpr "), "an identifier");
}

#include "module/header_text.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace {

std::vector<DeclaredMethod> ReadMethods(DeclarationReader& reader) {
  std::vector<DeclaredMethod> methods;
  for (reader.Expect("{"); !reader.Accept("}");) {
    for (const char* word : {"virtual", "HRESULT", "STDMETHODCALLTYPE"}) reader.Expect(word);
    DeclaredMethod& method = methods.emplace_back();
    method.name = reader.Next();
    for (reader.Expect("("); !reader.Accept(")");) {
      method.parameters.push_back(reader.Declaration());
      if (!reader.Accept(",") && reader.Current() != ")") reader.Fail();
    }
    for (const char* word : {"=", "0", ";"}) reader.Expect(word);
  }
  return methods;
}

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" of eleven numbers.
std::string ReadIdentifier(DeclarationReader& reader) {
  static const std::regex kNumbers(
      "0x(\\w{8}),0x(\\w{4}),0x(\\w{4}),\\{0x(\\w\\w),0x(\\w\\w),0x(\\w\\w),0x(\\w\\w),0x(\\w\\w),"
      "0x(\\w\\w),0x(\\w\\w),0x(\\w\\w)\\}");
  const std::string numbers = reader.Bracketed();
  if (!std::regex_match(numbers, kNumbers)) reader.Fail();
  return std::regex_replace(numbers, kNumbers, "{$1-$2-$3-$4$5-$6$7$8$9$10$11}");
}

// Keeps the first of a name; a second one cannot be read.
template <typename Map, typename Value>
void Keep(Map& map, const std::string& name, Value value, const DeclarationReader& reader) {
  if (!map.emplace(name, std::move(value)).second) reader.Fail();
}

std::string WithoutLinesOf(std::string text, const std::string& beginning) {
  for (std::size_t at = text.find(beginning); at != text.npos; at = text.find(beginning)) {
    text.erase(at, text.find('\n', at) + 1 - at);
  }
  return text;
}

}  // namespace

HeaderText::HeaderText(std::string_view text) {
  DeclarationReader reader(text);
  while (!reader.AtEnd()) {
    const std::string word = reader.Next();
    if (reader.Current() == "(") {
      // An assertion, or a macro that adds nothing to what is declared.
      reader.Bracketed();
      reader.Accept(";");
      continue;
    }
    if (word == "inline") {
      reader.Expect("constexpr");
      if (!reader.Accept("IID") && !reader.Accept("CLSID")) reader.Expect("GUID");
    } else if (word != "struct" && word != "enum") {
      reader.Fail();
    }
    const std::string name = reader.Next();
    if (word == "inline") {
      reader.Expect("=");
      Keep(identifiers, name, ReadIdentifier(reader), reader);
    } else if (word == "enum") {
      for (const char* part : {":", "std", ":", ":", "int32_t"}) reader.Expect(part);
      Keep(enumerations, name, reader.Values(), reader);
    } else if (reader.Accept(":")) {
      for (const char* part : {"public", "IUnknown"}) reader.Expect(part);
      Keep(interfaces, name, ReadMethods(reader), reader);
    } else {
      Keep(records, name, reader.Fields(), reader);
    }
    reader.Expect(";");
  }
}

std::string SourceText(const std::string& path) {
  std::ifstream file(ZORTUNEDEX_SOURCE "/" + path, std::ios::binary);
  if (!file) throw std::runtime_error(path + " cannot be opened");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string PublicHeaderText() {
  const std::string include = "#include \"";
  const std::string part = include + "core/interfaces/";
  std::string text = SourceText("core/interfaces.h");
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at)) {
    const std::size_t first = at + include.size();
    const std::size_t end = text.find('"', first);
    const std::string partText = SourceText(text.substr(first, end - first));
    // Parts include each other; each has its place in the whole once.
    text.replace(at, end + 1 - at, WithoutLinesOf(partText, part));
  }
  return text;
}

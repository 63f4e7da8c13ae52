// docs/windows.md names the methods that a proxy breaks. Which those are follows from the types
// that the IDL gives them: a type library says of a CHAR* that it is one byte, and a text that is
// handed in by its address is freed on both sides.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

using Names = std::set<std::string>;

std::string TextOf(const std::string& path) {
  std::ifstream file(ZORTUNEDEX_SOURCE "/" + path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

Names FindAll(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  Names names;
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
    names.insert((*match)[1]);
  }
  return names;
}

TEST(ProxyDocument, NamesTheMethodsThatAProxyBreaks) {
  const std::string idl = TextOf("module/ZorTunedex.idl");
  Names expected = FindAll(idl, R"(HRESULT (\w+)\([^;]*CHAR\* )");
  expected.merge(FindAll(idl, R"(HRESULT (\w+)\([^;]*\[in\] BSTR\* )"));
  ASSERT_EQ(5U, expected.size());
  expected.merge(FindAll(idl, R"(HRESULT (\w+)\([^;]*_StationTuneInfo\* )"));
  ASSERT_EQ(8U, expected.size());

  const std::string document = TextOf("../docs/windows.md");
  const std::size_t first = document.find("### What must not be called through a proxy");
  ASSERT_NE(std::string::npos, first);
  const std::string section = document.substr(first, document.find("\n## ", first) - first);
  EXPECT_EQ(expected, FindAll(section, R"(`((?:Get|Set|Save)\w+)`)"));
}

}  // namespace

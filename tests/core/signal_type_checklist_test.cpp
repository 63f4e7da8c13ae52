// CONTRIBUTING.md names every file that tells signal types apart.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

const fs::path kRoot = fs::path(ZORTUNEDEX_SAMPLES).parent_path();
/// A file that names fewer deals with some types alone.
constexpr std::ptrdiff_t kSeveral = 5;

std::string TextOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Every match's first group.
Names Matches(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  Names names;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
    names.insert((*match)[1]);
  return names;
}

Names Enumerators() {
  const std::string text = TextOf(kRoot / "src" / "core" / "interfaces" / "enumerations.h");
  const std::size_t begin = text.find("enum InputSignalType");
  if (begin == std::string::npos) return {};
  return Matches(text.substr(begin, text.find("};", begin) - begin), "\\b(InputSignal\\w+) = \\d+");
}

/// True when the name stands there as a whole word.
bool Has(const std::string& text, const std::string& name) {
  std::size_t place = text.find(name);
  while (place != std::string::npos) {
    place += name.size();
    if (place == text.size() || !std::isalnum(static_cast<unsigned char>(text[place]))) return true;
    place = text.find(name, place);
  }
  return false;
}

bool TellsTypesApart(const std::string& text, const Names& enumerators) {
  if (text.find("InputSignal") == std::string::npos) return false;
  const auto count = std::count_if(enumerators.begin(), enumerators.end(),
                                   [&](const std::string& name) { return Has(text, name); });
  return count >= kSeveral;
}

/// The sources below the folder, by their names: a file may move without a change of the list.
void Collect(const fs::path& folder, const Names& enumerators, Names& files) {
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const std::string extension = entry.path().extension().string();
    const Names sources = {".h", ".hpp", ".cpp", ".idl"};
    if (!sources.contains(extension)) continue;
    if (name.find("_test.cpp") != std::string::npos) continue;
    if (TellsTypesApart(TextOf(entry.path()), enumerators)) files.insert(name);
  }
}

/// The files in the first column of the table.
Names Listed() {
  const std::string text = TextOf(kRoot / "CONTRIBUTING.md");
  const std::size_t begin = text.find("\n## Adding a signal type\n");
  const std::size_t end = text.find("\nThen the documents", begin);
  if (begin == std::string::npos || end == std::string::npos) return {};
  Names names;
  for (const std::string& path :
       Matches(text.substr(begin, end - begin), "`((?:src|tests|fuzz|bench)/[^`]+)`")) {
    names.insert(fs::path(path).filename().string());
  }
  return names;
}

TEST(SignalTypeChecklist, NamesEveryPlace) {
  const Names enumerators = Enumerators();
  ASSERT_EQ(18U, enumerators.size());
  Names files;
  for (const char* folder : {"src", "tests", "fuzz", "bench"}) {
    Collect(kRoot / folder, enumerators, files);
  }
  ASSERT_FALSE(files.empty());
  EXPECT_EQ(files, Listed());
}

}  // namespace

// The documents name every command and option that the parser has, and no others.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <utility>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

using Names = std::set<std::string>;

/// Commands without others below them, and all options, as the completion of a shell has them.
struct Known {
  Names commands;
  Names options;
};

Names WordsIn(const std::string& text, const std::string& pattern) {
  const std::regex word(pattern);
  Names found;
  for (std::sregex_iterator i(text.begin(), text.end(), word), end; i != end; ++i) {
    found.insert((*i)[1]);
  }
  return found;
}

Known KnownToTheParser() {
  const Outcome completion = RunTool({"completion", "bash"});
  ExpectStatus(0, completion);
  Known known;
  const std::regex line("    \"([a-z ]*)\"\\) known=\\(([^)]*)\\) flags=\\(([^)]*)\\)");
  Names groups;
  for (std::sregex_iterator i(completion.out.begin(), completion.out.end(), line), end; i != end;
       ++i) {
    const std::string place = (*i)[1];
    const std::size_t blank = place.find(' ');
    if (blank != std::string::npos) groups.insert(place.substr(0, blank));
    known.commands.insert(place);
    known.options.merge(WordsIn((*i)[3], "(-[-a-z]+)"));
  }
  known.commands.erase("");
  for (const std::string& group : groups) known.commands.erase(group);
  return known;
}

std::string Document(const std::string& name) {
  std::ifstream file(std::string(ZORTUNEDEX_DOCS) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Without what a man page says about type.
std::string Plain(std::string text) {
  text = std::regex_replace(text, std::regex("\\\\f[A-Z]"), "");
  text = std::regex_replace(text, std::regex("\\\\-"), "-");
  return std::regex_replace(text, std::regex("\""), "");
}

void ExpectWhole(const std::string& document, const std::string& text) {
  const Known known = KnownToTheParser();
  EXPECT_LT(30U, known.commands.size());
  EXPECT_LT(20U, known.options.size());
  for (const std::string& command : known.commands) {
    EXPECT_NE(std::string::npos, text.find(command)) << document << ": " << command;
  }
  const Names named = WordsIn(text, "[^-a-z](--?[a-z][-a-z]*)");
  for (const std::string& option : known.options) {
    EXPECT_TRUE(named.contains(option)) << document << ": " << option;
  }
  for (const std::string& option : WordsIn(text, "[^-a-z](--[a-z][-a-z]*)")) {
    EXPECT_TRUE(known.options.contains(option)) << document << ": " << option;
  }
}

TEST(Documents, TheManualPageIsWhole) { ExpectWhole("tunedex.1", Plain(Document("tunedex.1"))); }

TEST(Documents, TheDocumentOfTheToolIsWhole) { ExpectWhole("tool.md", Document("tool.md")); }

TEST(Documents, EveryCommandAndOptionIsCompleted) {
  // What the help of each command lists, which the parser prints itself.
  const Known known = KnownToTheParser();
  for (const std::string& command : known.commands) {
    Arguments words;
    std::string word;
    for (const char letter : command + " ") {
      if (letter != ' ') {
        word += letter;
      } else {
        words.push_back(std::exchange(word, {}));
      }
    }
    words.emplace_back("--help");
    const Outcome help = RunTool(words);
    ExpectStatus(0, help);
    for (const std::string& option : WordsIn(help.out, "\n  (?:-[a-z],)?(--[a-z][-a-z]*)")) {
      EXPECT_TRUE(known.options.contains(option)) << command << ": " << option;
    }
  }
  for (const std::string& group : WordsIn(RunTool({"--help"}).out, "\n  ([a-z]+) ")) {
    EXPECT_TRUE(std::any_of(known.commands.begin(), known.commands.end(),
                            [&](const std::string& command) { return command.starts_with(group); }))
        << group;
  }
}

}  // namespace

}  // namespace zortunedex::kit::tool

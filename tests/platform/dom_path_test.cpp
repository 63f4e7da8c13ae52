#include "platform/dom_path.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "platform/dom.h"
#include "support/dom_tools.h"
#include "support/expect.h"

namespace {

constexpr const char* kPaths[] = {
    "./Channel",
    "./Channel[@index='5']",
    "./A/B",
    "./A[@x='1']/B[@y='2']",
    "./A[@a='1'][@b='2'][@c='3'][@d='4'][@e='5']",
    "./A[@a = '1']",
    "./A[@a\t=\t'']",
    "./A[@a='][@b=\"/.*()']",
    "./p:A[@q:b='1']",
    "./_A-1.b",
};

constexpr const char* kNoPaths[] = {
    "",
    ".",
    "./",
    "A",
    "/A",
    "//A",
    "./A/",
    "./A//B",
    "./1A",
    "./A[",
    "./A[]",
    "./A[@]",
    "./A[@a]",
    "./A[@a=]",
    "./A[@a=1]",
    "./A[@a='1]",
    "./A[@a='1'",
    "./A[@a=\"1\"]",
    "./A[a='1']",
    "./A[@a='1']]",
    "./A[@a='it's']",
    "./A B",
    "./A|./B",
    "./*",
    "./A[1]",
    "./@a",
    "./A[@a='1' and @b='2']",
    "./A ",
    " ./A",
    "./A:B:C",
    "./:A",
    "./A:",
};

TEST(DomPath, TakesChainsOfSteps) {
  for (const char* path : kPaths) EXPECT_TRUE(dom::Path::Parse(path)) << path;
}

TEST(DomPath, RefusesEverythingElse) {
  for (const char* path : kNoPaths) EXPECT_FALSE(dom::Path::Parse(path)) << path;
}

TEST(DomPath, StepsAndPredicatesStandInOrder) {
  const std::optional<dom::Path> path =
      dom::Path::Parse("./A[@x='1'][@p:y\t= ']/[@a=']/q:B[@z='']");
  ASSERT_TRUE(path);
  ASSERT_EQ(2U, path->steps.size());
  EXPECT_EQ("A", path->steps[0].name);
  ASSERT_EQ(2U, path->steps[0].predicates.size());
  EXPECT_EQ("x", path->steps[0].predicates[0].name);
  EXPECT_EQ("1", path->steps[0].predicates[0].value);
  EXPECT_EQ("p:y", path->steps[0].predicates[1].name);
  EXPECT_EQ("]/[@a=", path->steps[0].predicates[1].value);
  EXPECT_EQ("q:B", path->steps[1].name);
  ASSERT_EQ(1U, path->steps[1].predicates.size());
  EXPECT_EQ("z", path->steps[1].predicates[0].name);
  EXPECT_EQ("", path->steps[1].predicates[0].value);
}

TEST(DomPath, NameOfASingleStep) {
  EXPECT_EQ("Channel", dom::NameInPath("./Channel"));
  EXPECT_EQ("p:A", dom::NameInPath("./p:A"));
  for (const char* path : {"./A/B", "./A[@x='1']", "./", "A", "", "./1A", "./A ", "./A:", "./*"}) {
    EXPECT_EQ("", dom::NameInPath(path)) << path;
  }
}

// What selects says the same of a path as its parser does.
TEST(DomPath, SelectingRefusesWhatIsNoPath) {
  const dom::Document document = dom_tools::NewDocumentWithRoot("Root");
  const dom::Element root = dom_tools::Root(document);
  for (const char* path : kNoPaths) {
    dom::Element found;
    dom::ElementList all;
    ExpectHr(E_INVALIDARG, root.SelectSingle(path, found));
    ExpectHr(E_INVALIDARG, root.Select(path, all));
  }
}

TEST(DomPath, NamesHaveAPrefixWhereTheyMay) {
  for (const char* name : {"a", "_A-1.b", "Channel"}) {
    EXPECT_TRUE(dom::IsPlainName(name)) << name;
    EXPECT_TRUE(dom::IsQualifiedName(name)) << name;
  }
  EXPECT_FALSE(dom::IsPlainName("p:a"));
  EXPECT_TRUE(dom::IsQualifiedName("p:a"));
  for (const char* name : {"", "1a", "a b", "-a", "a:", ":a", "a:b:c", "a\xC3\xA9"}) {
    EXPECT_FALSE(dom::IsPlainName(name)) << name;
    EXPECT_FALSE(dom::IsQualifiedName(name)) << name;
  }
}

// The platform's own reader gets through whatever passes the check, found or not.
TEST(DomPath, PlatformReadsWhatIsTaken) {
  const dom::Document document = dom_tools::NewDocumentWithRoot("Root");
  const dom::Element root = dom_tools::Root(document);
  constexpr char kValues[] = " !\"#$%&()*+,-./:;<=>?@[\\]^_`{|}~aZ09\t";
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string value;
    for (std::size_t length = random() % 12; length > 0; --length) {
      value += kValues[random() % (sizeof(kValues) - 1)];
    }
    dom::Element child;
    ExpectHr(S_OK, document.CreateElement("Item", child));
    ExpectHr(S_OK, child.SetNarrow("key", value));
    ExpectHr(S_OK, root.AppendChild(child));
    const std::string path = "./Item[@key='" + value + "']";
    dom::Element found;
    ExpectHr(S_OK, root.SelectSingle(path.c_str(), found));
    std::string read;
    ExpectHr(S_OK, found.GetUtf8("key", read));
    EXPECT_EQ(value, read);
    ExpectHr(S_OK, root.RemoveChild(child));
    ExpectHr(S_FALSE, root.SelectSingle(path.c_str(), found));
    if (HasFailure()) break;
  }
}

}  // namespace

// Linux only: about the document tree that only Linux has
#include "platform/linux/tree/names.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "support/dom_tools.h"

namespace {

using namespace dom_tools;

TEST(Names, AreFoundBehindAnyOther) {
  domtree::Pool pool;
  domtree::Names names(pool);
  const domtree::NameId element = names.Intern("E");
  const domtree::NameId first = names.Intern("first");
  const domtree::NameId second = names.Intern("second");
  for (const domtree::NameId previous : {element, first, second}) {
    // Whatever was asked for before.
    for (int round = 0; round < 3; ++round) {
      EXPECT_EQ(first, names.FindAfter(previous, "first"));
      EXPECT_EQ(second, names.FindAfter(previous, "second"));
      EXPECT_EQ(second, names.FindAfter(previous, "second"));
      EXPECT_EQ(domtree::kNoName, names.FindAfter(previous, "secon"));
      EXPECT_EQ(domtree::kNoName, names.FindAfter(previous, "second2"));
    }
  }
}

TEST(Names, ThatLastAreKnownByTheirAddress) {
  static constexpr char kFirst[] = "first";
  static constexpr char kSame[] = "first";
  const auto lasting = [](const char* name) { return dom::Name::Lasting(name); };
  domtree::Pool pool;
  domtree::Names names(pool);
  const domtree::NameId first = names.Intern("first");
  const domtree::NameId other = names.Intern("other");
  for (int round = 0; round < 3; ++round) {
    EXPECT_TRUE(names.Is(first, lasting(kFirst)));
    EXPECT_FALSE(names.Is(other, lasting(kFirst)));
    EXPECT_TRUE(names.Is(first, lasting(kSame)));
    EXPECT_EQ(first, names.InternPlain(lasting(kFirst)));
    EXPECT_EQ(domtree::kNoName, names.InternPlain(lasting("no name")));
  }
}

// Others may stand where something else stood.
TEST(Names, ThatDoNotLastAreReadEachTime) {
  domtree::Pool pool;
  domtree::Names names(pool);
  char name[] = "first";
  const domtree::NameId first = names.InternPlain(dom::Name(name));
  EXPECT_TRUE(names.Is(first, name));
  name[0] = 'F';
  EXPECT_FALSE(names.Is(first, name));
  EXPECT_NE(first, names.InternPlain(dom::Name(name)));
}

TEST(Names, OfManyElementsAreFoundAgain) {
  static constexpr const char* kNames[] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k"};
  domtree::Pool pool;
  domtree::Names names(pool);
  for (int round = 0; round < 3; ++round) {
    for (domtree::NameId id = 0; id < std::size(kNames); ++id) {
      EXPECT_EQ(id, names.InternPlain(dom::Name::Lasting(kNames[id])));
      EXPECT_EQ(id, names.InternPlain(dom::Name::Lasting(kNames[id])));
    }
  }
}

// The order in which names are met decides how they are looked for, and nothing else.
TEST(Names, OfAttributesStandOnceInWhateverOrderTheyAreWritten) {
  const dom::Document document = NewDocumentWithRoot("T");
  for (const std::string order : {"abcd", "dcba", "bdac", "acbd", "cadb"}) {
    const dom::Element child = AddChild(Root(document), "C");
    std::string expected = "C";
    for (const char letter : order) expected += '[' + std::string(1, letter) + "=2]";
    for (const char* const value : {"1", "2"}) {
      for (const char letter : order) {
        ExpectHr(S_OK, child.SetNarrow(std::string(1, letter).c_str(), value));
      }
    }
    EXPECT_EQ(expected, Describe(child));
  }
}

// The first one's attributes come in another order and number than those of all that follow.
TEST(Names, OfAttributesDoNotDependOnEarlierElements) {
  const dom::Document document = NewDocumentWithRoot("T");
  const char* const attributes[] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
  for (std::size_t shift = 0; shift < 10; ++shift) {
    const dom::Element child = AddChild(Root(document), "C");
    for (std::size_t i = 0; i < 10; ++i) {
      const std::size_t place = (i * (shift % 3 == 0 ? 3 : 7) + shift) % 10;
      ExpectHr(S_OK, child.SetInt(attributes[place], static_cast<std::int32_t>(place + shift)));
    }
    ExpectHr(E_INVALIDARG, child.SetInt("xmlns", 1));
    ExpectHr(E_INVALIDARG, child.SetInt("a b", 1));
    for (std::size_t i = 0; i < 10; ++i) {
      std::int32_t value = -1;
      ExpectHr(S_OK, child.GetInt(attributes[i], value));
      EXPECT_EQ(static_cast<std::int32_t>(i + shift), value);
    }
  }
}

TEST(Names, NumbersAreWrittenAtEveryLength) {
  const dom::Document document = NewDocumentWithRoot("T");
  for (const std::int32_t number : {0, 9, 10, 99, 1000, 9'999'999, 10'000'000, 99'999'999,
                                    100'000'000, 2'147'483'647, -1, -99'999'999, -2'147'483'647}) {
    std::string text;
    ExpectHr(S_OK, Root(document).SetInt("n", number));
    ExpectHr(S_OK, Root(document).GetUtf8("n", text));
    EXPECT_EQ(std::to_string(number), text);
  }
}

}  // namespace

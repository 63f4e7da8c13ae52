// Linux only: about the document tree that only Linux has
#include "platform/linux/tree/names.h"

#include <gtest/gtest.h>

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

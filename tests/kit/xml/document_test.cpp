#include "kit/xml/tree/document.h"

#include <gtest/gtest.h>

#include <string>

namespace zortunedex::kit {

namespace {

using markup::Document;
using markup::Element;
using markup::kNone;

constexpr char kText[] =
    "<?xml version=\"1.0\"?>\r\n"
    "<a x=\"1\" y='&lt;&#x42;'>\r\n"
    "\t<b/>text<!-- c -->\r\n"
    "\t<c><d/></c>\r\n"
    "</a>\r\n";

TEST(Document, IsATreeOfIndexes) {
  const Document document = Document::Read(kText);
  const auto elements = document.Elements();
  ASSERT_EQ(4U, elements.size());
  EXPECT_EQ("a", document.NameOf(elements[0]));
  EXPECT_EQ(kNone, elements[0].parent);
  EXPECT_EQ(1U, elements[0].firstChild);
  EXPECT_EQ(kNone, elements[0].next);
  EXPECT_EQ(2U, elements[1].next);
  EXPECT_EQ(kNone, elements[1].firstChild);
  EXPECT_EQ(0U, elements[2].parent);
  EXPECT_EQ(3U, elements[2].firstChild);
  EXPECT_EQ(2U, elements[3].parent);
  EXPECT_EQ(kNone, elements[3].next);
}

TEST(Document, KnowsWhereEverythingStands) {
  const Document document = Document::Read(kText);
  const Element& root = document.Elements()[0];
  EXPECT_EQ("<a x=\"1\" y='&lt;&#x42;'>", document.Text(root.tag));
  EXPECT_EQ("</a>", document.Text(root.endTag));
  EXPECT_TRUE(document.Text(root.Whole()).ends_with("</c>\r\n</a>"));
  const auto attributes = document.AttributesOf(root);
  ASSERT_EQ(2U, attributes.size());
  EXPECT_EQ("x=\"1\"", document.Text(attributes[0].Whole()));
  EXPECT_EQ("&lt;&#x42;", document.Text(attributes[1].value));
  EXPECT_EQ("<B", document.ValueOf(attributes[1]));
  const Element& empty = document.Elements()[1];
  EXPECT_TRUE(empty.endTag.IsEmpty());
  EXPECT_EQ("<b/>", document.Text(empty.Whole()));
  EXPECT_EQ((markup::Place{3, 2}), document.PlaceOf(empty.tag.begin));
}

TEST(Document, FindsAttributesByName) {
  const Document document = Document::Read(kText);
  const Element& root = document.Elements()[0];
  EXPECT_EQ("1", document.ValueOf(root, "x"));
  EXPECT_EQ("<B", document.ValueOf(root, "y"));
  EXPECT_EQ(std::nullopt, document.ValueOf(root, "z"));
  EXPECT_EQ(nullptr, document.Find(root, "X"));
}

TEST(Document, KeepsWhatIsNoElement) {
  const Document document = Document::Read(std::string(kText) + "<?p q?>");
  std::string text;
  for (const markup::Leaf& leaf : document.Leaves()) {
    text += std::string(document.Text(leaf.span)) + (leaf.parent == kNone ? " outside|" : "|");
  }
  EXPECT_EQ("text|<!-- c -->|<?p q?> outside|", text);
}

TEST(Document, StaysWholeWhenItMoves) {
  Document first = Document::Read("<a b='&amp;'/>");
  EXPECT_EQ((markup::Place{1, 4}), first.PlaceOf(3));
  const std::string_view before = first.Bytes();
  const Document moved = std::move(first);
  EXPECT_EQ(before.data(), moved.Bytes().data());
  EXPECT_EQ("&", moved.ValueOf(moved.Elements()[0], "b"));
  EXPECT_EQ((markup::Place{1, 4}), moved.PlaceOf(3));
}

TEST(Document, HasTheValuesThatAreReadOnceMended) {
  const Document document = Document::Read("<a b='x & y' c='\x01' d='1\r\n2\t3' b='z'/>");
  const Element& root = document.Elements()[0];
  EXPECT_EQ("x & y", document.ValueOf(root, "b"));
  EXPECT_EQ("\xEF\xBF\xBD", document.ValueOf(root, "c"));
  EXPECT_EQ("1 2 3", document.ValueOf(root, "d"));
  EXPECT_EQ(3U, document.AttributesOf(root).size());
}

TEST(Document, ClosesAnElementInFrontOfItsLike) {
  const Document document = Document::Read("<s><c i='1'><e/><c i='2'><e/></c>text<c i='3'/></s>");
  const auto elements = document.Elements();
  ASSERT_EQ(6U, elements.size());
  for (const std::size_t i : {1U, 3U, 5U}) EXPECT_EQ(0U, elements[i].parent) << i;
  EXPECT_EQ(3U, elements[1].next);
  EXPECT_EQ(5U, elements[3].next);
  EXPECT_EQ(2U, elements[1].firstChild);
  EXPECT_EQ(kNone, elements[2].next);
  EXPECT_EQ("<c i='1'><e/>", document.Text(elements[1].Whole()));
  ASSERT_EQ(1U, document.Leaves().size());
  EXPECT_EQ(0U, document.Leaves()[0].parent);
}

}  // namespace

}  // namespace zortunedex::kit

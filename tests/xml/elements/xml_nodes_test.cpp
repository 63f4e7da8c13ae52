#include "xml/elements/xml_nodes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/dom_text.h"
#include "support/expect.h"

namespace {

struct Number {
  HRESULT hr;
  LONG value;
};

Number ReadNumber(const std::string& text) {
  const TextDocument document("<a n=\"" + text + "\"/>");
  LONG value = 77;
  const HRESULT hr = xml::GetAttrInt(document.root, "n", &value);
  return {hr, value};
}

void ExpectNumber(LONG expected, const std::string& text) {
  const Number number = ReadNumber(text);
  ExpectHr(S_OK, number.hr);
  EXPECT_EQ(expected, number.value) << text;
}

std::string Order(const dom::Element& parent) {
  std::string order;
  dom::Element child;
  for (HRESULT hr = parent.FirstChildElement(child); hr == S_OK;) {
    order += Attribute(child, "id");
    dom::Element next;
    hr = child.NextSiblingElement(next);
    child = std::move(next);
  }
  return order;
}

HRESULT Insert(const dom::Element& parent, const char* id, LONG key) {
  dom::Element child;
  ExpectHr(S_OK, xml::CreateElementFor(parent, "c", child));
  ExpectHr(S_OK, xml::SetAttr(child, "k", key));
  ExpectHr(S_OK, child.SetNarrow("id", id));
  return xml::InsertSorted(parent, child, "./c", "k", key);
}

}  // namespace

TEST(XmlNodes, NumbersAreReadByTheDecimalRule) {
  ExpectNumber(0, "");
  ExpectNumber(12, "12");
  ExpectNumber(-12, "-12");
  ExpectNumber(12, "+12");
  ExpectNumber(12, "   12");
  ExpectNumber(44, "044");
  ExpectNumber(12, "12abc");
  ExpectNumber(12, "12 34");
  ExpectNumber(0, "abc");
  ExpectNumber(0, "-");
  ExpectNumber(0, "--5");
  ExpectNumber(0, "- 5");
  ExpectNumber(0, "0x10");
  ExpectNumber(1, "1.9");
  ExpectNumber(2147483647, "2147483647");
}

TEST(XmlNodes, NumbersBeyondTheirRangeWrap) {
  ExpectNumber(-1, "4294967295");
  ExpectNumber(-2147483647 - 1, "2147483648");
  ExpectNumber(-2147483647 - 1, "-2147483648");
  ExpectNumber(5, "4294967301");
  ExpectNumber(1, "-4294967295");
}

TEST(XmlNodes, MissingNumberIsZero) {
  const TextDocument document("<a/>");
  LONG value = 77;
  ExpectHr(S_FALSE, xml::GetAttrInt(document.root, "n", &value));
  EXPECT_EQ(0, value);
}

TEST(XmlNodes, WrittenNumbersAreSigned) {
  const TextDocument document("<a/>");
  ExpectHr(S_OK, xml::SetAttr(document.root, "n", static_cast<LONG>(-1)));
  EXPECT_EQ("-1", Attribute(document.root, "n"));
  ExpectHr(S_OK, xml::SetAttr(document.root, "n", static_cast<LONG>(0x80000000U)));
  EXPECT_EQ("-2147483648", Attribute(document.root, "n"));
}

TEST(XmlNodes, MissingTextLeavesTheBuffer) {
  const TextDocument document("<a/>");
  xml::TextBuffer buffer = "stays";
  ExpectHr(S_FALSE, xml::GetAttrText(document.root, "t", buffer));
  EXPECT_STREQ("stays", buffer);
}

TEST(XmlNodes, TextIsCutToTheBuffer) {
  for (const std::size_t length : {0U, 1U, 258U, 259U, 260U, 1000U}) {
    const std::string text(length, 'x');
    const TextDocument document("<a t=\"" + text + "\"/>");
    xml::TextBuffer buffer;
    std::memset(buffer, '?', sizeof(buffer));
    ExpectHr(S_OK, xml::GetAttrText(document.root, "t", buffer));
    EXPECT_EQ(text.substr(0, 259), buffer);
  }
}

TEST(XmlNodes, TextKeepsBlanksAndSpecialCharacters) {
  const TextDocument document("<a t=\"  &lt;&amp;&gt;&quot;&apos; &#9;&#10;\"/>");
  xml::TextBuffer buffer = {};
  ExpectHr(S_OK, xml::GetAttrText(document.root, "t", buffer));
  EXPECT_STREQ("  <&>\"' \t\n", buffer);
}

TEST(XmlNodes, NullTextIsWrittenEmpty) {
  const TextDocument document("<a t='old'/>");
  ExpectHr(S_OK, xml::SetAttr(document.root, "t", BSTR{}));
  EXPECT_EQ("", Attribute(document.root, "t"));
  ExpectHr(S_OK, xml::SetAttr(document.root, "t", Wide("new").Get()));
  EXPECT_EQ("new", Attribute(document.root, "t"));
}

TEST(XmlNodes, NullArguments) {
  const TextDocument document("<a/>");
  const dom::Element none;
  LONG value = 77;
  xml::TextBuffer buffer = "stays";
  dom::Element out;
  ExpectHr(E_POINTER, xml::GetAttrInt(none, "n", &value));
  ExpectHr(E_POINTER, xml::GetAttrInt(document.root, nullptr, &value));
  ExpectHr(E_POINTER, xml::GetAttrInt(document.root, "n", nullptr));
  ExpectHr(E_POINTER, xml::GetAttrText(none, "n", buffer));
  ExpectHr(E_POINTER, xml::GetAttrText(document.root, nullptr, buffer));
  ExpectHr(E_POINTER, xml::SetAttr(none, "n", static_cast<LONG>(1)));
  ExpectHr(E_POINTER, xml::SetAttr(document.root, nullptr, static_cast<LONG>(1)));
  ExpectHr(E_POINTER, xml::SetAttr(none, "n", BSTR{}));
  ExpectHr(E_POINTER, xml::SetAttr(document.root, nullptr, BSTR{}));
  ExpectHr(E_POINTER, xml::InsertSorted(none, document.root, "./c", "k", 1));
  ExpectHr(E_POINTER, xml::InsertSorted(document.root, none, "./c", "k", 1));
  ExpectHr(E_POINTER, xml::CreateElementFor(none, "c", out));
  ExpectHr(E_POINTER, xml::CreateElementFor(document.root, nullptr, out));
  ExpectHr(E_POINTER, xml::RemoveAllChildren(none, "./c"));
  ExpectHr(E_POINTER, xml::RemoveAllChildren(document.root, nullptr));
  EXPECT_EQ(77, value);
  EXPECT_STREQ("stays", buffer);
  EXPECT_FALSE(out);
}

TEST(XmlNodes, SiblingsStaySorted) {
  const TextDocument document("<a><c id='1' k='1'/><c id='3' k='3'/><c id='9' k='9'/></a>");
  ExpectHr(S_OK, Insert(document.root, "5", 5));
  ExpectHr(S_OK, Insert(document.root, "0", 0));
  ExpectHr(S_OK, Insert(document.root, "n", 10));
  ExpectHr(S_OK, Insert(document.root, "-", -4));
  EXPECT_EQ("-01359n", Order(document.root));
}

TEST(XmlNodes, EqualKeysKeepTheOrderOfArrival) {
  const TextDocument document("<a><c id='a' k='2'/><c id='b' k='3'/></a>");
  ExpectHr(S_OK, Insert(document.root, "c", 2));
  ExpectHr(S_OK, Insert(document.root, "d", 2));
  EXPECT_EQ("acdb", Order(document.root));
}

TEST(XmlNodes, SiblingsOutOfOrderAreNotReordered) {
  const TextDocument document("<a><c id='a' k='9'/><c id='b' k='2'/><c id='c' k='7'/></a>");
  ExpectHr(S_OK, Insert(document.root, "d", 8));
  EXPECT_EQ("dabc", Order(document.root));
  ExpectHr(S_OK, Insert(document.root, "e", 9));
  EXPECT_EQ("dabce", Order(document.root));
}

TEST(XmlNodes, MissingKeyReadsAsZeroAndOtherNamesDoNotCount) {
  const TextDocument document("<a><x id='x' k='99'/><c id='a'/><!-- c --><c id='b' k='5'/></a>");
  ExpectHr(S_OK, Insert(document.root, "c", -1));
  EXPECT_EQ("xcab", Order(document.root));
  ExpectHr(S_OK, Insert(document.root, "d", 0));
  EXPECT_EQ("xcadb", Order(document.root));
  ExpectHr(S_OK, Insert(document.root, "e", 2147483647));
  EXPECT_EQ("xcadbe", Order(document.root));
}

TEST(XmlNodes, RemovesMatchingChildrenOnly) {
  const TextDocument document("<a><c id='1'/><x id='x'><c id='in'/></x><!-- c --><c id='2'/></a>");
  ExpectHr(S_OK, xml::RemoveAllChildren(document.root, "./c"));
  EXPECT_EQ("x", Order(document.root));
  EXPECT_EQ("in", Order(Child(document.root, "./x")));
  ExpectHr(S_OK, xml::RemoveAllChildren(document.root, "./c"));
}

TEST(XmlNodes, ChildrenAreRemovedAndFoundByTheirNameAlone) {
  const TextDocument document("<a><x><c/></x><c id='1'/></a>");
  for (const char* path : {"./x/c", "./c[@id='1']", "./*", "./", "c", "."}) {
    ExpectHr(E_INVALIDARG, xml::RemoveAllChildren(document.root, path));
    dom::Element found;
    ExpectHr(E_INVALIDARG, xml::FindChild(document.root, path, &found));
  }
  EXPECT_EQ(1, Count(document.root, "./x/c"));
  EXPECT_EQ(1, Count(document.root, "./c"));
}

TEST(XmlNodes, FindsTheFirstChild) {
  const TextDocument document(
      "<a><!-- c --><ab/><x><c id='0'/></x><p:c xmlns:p='urn:p'/><c id='1'/><c id='2'/></a>");
  dom::Element found;
  ExpectHr(S_OK, xml::FindChild(document.root, "./c", &found));
  EXPECT_EQ("1", Attribute(found, "id"));
  ExpectHr(S_FALSE, xml::FindChild(document.root, "./b", &found));
  EXPECT_FALSE(found);
  ExpectHr(E_POINTER, xml::FindChild({}, "./c", &found));
  ExpectHr(E_POINTER, xml::FindChild(document.root, nullptr, &found));
  ExpectHr(E_POINTER, xml::FindChild(document.root, "./c", nullptr));
}

TEST(XmlNodes, NewElementsBelongToTheDocumentAndHaveNoParent) {
  const TextDocument document("<a/>");
  dom::Element made;
  ExpectHr(S_OK, xml::CreateElementFor(document.root, "c", made));
  EXPECT_FALSE(document.root.HasChildNodes());
  ExpectHr(S_OK, document.root.AppendChild(made));
  EXPECT_EQ("<a>\n\t<c/>\n</a>\n", Formatted(document.root));
}

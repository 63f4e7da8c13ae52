// What every implementation of the document seam answers.
#include "platform/dom.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using namespace dom_tools;

TEST(Dom, EmptyHandlesAnswerInvalidArgument) {
  const dom::Element none;
  dom::Element element;
  dom::ElementList list;
  dom::Document document;
  std::string text;
  Bstr wide;
  std::int32_t number = 7;
  char buffer[4] = "abc";
  bool success = true;
  ExpectHr(E_INVALIDARG, none.TagName(text));
  ExpectHr(E_INVALIDARG, none.OwnerDocument(document));
  ExpectHr(E_INVALIDARG, none.SelectSingle("./A", element));
  ExpectHr(E_INVALIDARG, none.Select("./A", list));
  ExpectHr(E_INVALIDARG, none.FirstChildElement(element));
  ExpectHr(E_INVALIDARG, none.NextSiblingElement(element));
  ExpectHr(E_INVALIDARG, none.GetInt("a", number));
  ExpectHr(E_INVALIDARG, none.GetNarrow("a", buffer, sizeof(buffer)));
  ExpectHr(E_INVALIDARG, none.GetWide("a", wide));
  ExpectHr(E_INVALIDARG, none.GetUtf8("a", text));
  ExpectHr(E_INVALIDARG, none.SetInt("a", 1));
  ExpectHr(E_INVALIDARG, none.SetWide("a", nullptr));
  ExpectHr(E_INVALIDARG, none.SetNarrow("a", "x"));
  ExpectHr(E_INVALIDARG, none.VisitAttributes([](std::string_view, std::string_view) {}));
  EXPECT_FALSE(none.HasChildNodes());
  EXPECT_EQ(7, number);
  EXPECT_STREQ("abc", buffer);
  ExpectHr(E_INVALIDARG, dom::Element::From(nullptr, element));
  ExpectHr(E_INVALIDARG, document.Load("x", success));
  EXPECT_FALSE(success);
  ExpectHr(E_INVALIDARG, document.Save("x"));
  ExpectHr(E_INVALIDARG, document.DocumentElement(element));
  ExpectHr(E_INVALIDARG, document.CreateElement("A", element));
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction("xml", "version='1.0'"));
  ExpectHr(E_INVALIDARG, document.AppendChild(none));
}

TEST(Dom, NullArgumentsAreInvalid) {
  const dom::Document document = NewDocumentWithRoot("A");
  const dom::Element root = Root(document);
  dom::Element element;
  dom::ElementList list;
  std::string text = "old";
  Bstr wide;
  std::int32_t number = 7;
  char buffer[4] = "abc";
  ExpectHr(E_INVALIDARG, root.SelectSingle(nullptr, element));
  ExpectHr(E_INVALIDARG, root.Select(nullptr, list));
  ExpectHr(E_INVALIDARG, root.GetInt(nullptr, number));
  ExpectHr(E_INVALIDARG, root.GetNarrow(nullptr, buffer, sizeof(buffer)));
  ExpectHr(E_INVALIDARG, root.GetNarrow("a", nullptr, 4));
  ExpectHr(E_INVALIDARG, root.GetWide(nullptr, wide));
  ExpectHr(E_INVALIDARG, root.GetUtf8(nullptr, text));
  ExpectHr(E_INVALIDARG, root.SetInt(nullptr, 1));
  ExpectHr(E_INVALIDARG, root.SetWide(nullptr, wide.Get()));
  ExpectHr(E_INVALIDARG, root.SetNarrow(nullptr, "x"));
  ExpectHr(E_INVALIDARG, root.AppendChild(element));
  ExpectHr(E_INVALIDARG, root.InsertBefore(element, element));
  ExpectHr(E_INVALIDARG, root.RemoveChild(element));
  ExpectHr(E_INVALIDARG, document.CreateElement(nullptr, element));
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction(nullptr, "x"));
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction("x", nullptr));
  ExpectHr(E_INVALIDARG, document.AppendChild(element));
  EXPECT_EQ("A", Describe(root));
}

TEST(Dom, MissingFilesLoadAsNothing) {
  const TempDir dir;
  dom::Document document = NewDocumentWithRoot("Old");
  bool success = true;
  ExpectHr(S_FALSE, document.Load(dir.File("missing.xml"), success));
  EXPECT_FALSE(success);
  dom::Element root = NewElement(document, "X");
  ExpectHr(S_FALSE, document.DocumentElement(root));
  EXPECT_FALSE(root);
  // The document can be used again.
  ExpectHr(S_OK, document.AppendProcessingInstruction("xml", "version='1.0' encoding='utf-8'"));
  ExpectHr(S_OK, document.AppendChild(NewElement(document, "New")));
  EXPECT_EQ("New", Describe(Root(document)));
}

TEST(Dom, DirectoriesLoadAsNothing) {
  const TempDir dir;
  dom::Document document = NewDocument();
  bool success = true;
  ExpectHr(S_FALSE, document.Load(dir.Path(), success));
  EXPECT_FALSE(success);
}

TEST(Dom, MalformedFilesLoadAsNothing) {
  EXPECT_TRUE(Loads("<a/>"));
  EXPECT_TRUE(Loads("<?xml version='1.0'?><a b='&amp;&#65;'>x<!-- y --></a>"));
  const char* const malformed[] = {"",
                                   " ",
                                   "x",
                                   "<a>",
                                   "<a></b>",
                                   "<a/><b/>",
                                   "<a b=c/>",
                                   "<a b='<'/>",
                                   "<a b='&'/>",
                                   "<a/>x",
                                   "<a b='1' b='2'/>",
                                   "<a>&x;</a>",
                                   "<a>&#0;</a>",
                                   "<a b='1'c='2'/>",
                                   "<1/>",
                                   "<a b/>",
                                   "<a",
                                   "<a><!-- -- --></a>",
                                   "<?xml version='1.0'?>",
                                   "<a>\x01</a>",
                                   " <?xml version='1.0'?><a/>"};
  for (const char* bytes : malformed) EXPECT_FALSE(Loads(bytes)) << bytes;
}

TEST(Dom, AttributesAreReadAsNumberAndText) {
  const dom::Document document = LoadBytes(
      "<A n='42' neg=' -7x' big='4294967295' none='' word='x' euro='&#8364;uro' long='12345678901'"
      " quotes='&lt;&gt;&amp;&quot;&apos;'/>");
  const dom::Element root = Root(document);
  std::int32_t number = 0;
  const auto numberOf = [&](const char* name) {
    ExpectHr(S_OK, root.GetInt(name, number));
    return number;
  };
  EXPECT_EQ(42, numberOf("n"));
  EXPECT_EQ(-7, numberOf("neg"));
  EXPECT_EQ(-1, numberOf("big"));
  EXPECT_EQ(0, numberOf("none"));
  EXPECT_EQ(0, numberOf("word"));
  EXPECT_EQ(-539222987, numberOf("long"));
  EXPECT_EQ("<>&\"'", Utf8(root, "quotes"));
  EXPECT_EQ("\xE2\x82\xACuro", Utf8(root, "euro"));
  Bstr text;
  ExpectHr(S_OK, root.GetWide("euro", text));
  ExpectText(OLESTR("\u20ACuro"), text.Get());
  ExpectHr(S_OK, root.GetWide("none", text));
  EXPECT_NE(nullptr, text.Get());
  EXPECT_TRUE(text.IsEmpty());
}

TEST(Dom, MissingAttributesLeaveValuesAlone) {
  const dom::Document document = LoadBytes("<A n='1'><B m='2'/></A>");
  const dom::Element root = Root(document);
  for (const char* name : {"x", "N", "n ", "m", "Component index", "", "a:b", "1"}) {
    std::int32_t number = 7;
    char buffer[4] = "abc";
    Bstr text = Wide("abc");
    std::string utf8 = "abc";
    ExpectHr(S_FALSE, root.GetInt(name, number));
    ExpectHr(S_FALSE, root.GetNarrow(name, buffer, sizeof(buffer)));
    ExpectHr(S_FALSE, root.GetWide(name, text));
    ExpectHr(S_FALSE, root.GetUtf8(name, utf8));
    EXPECT_EQ(7, number);
    EXPECT_STREQ("abc", buffer);
    ExpectText(OLESTR("abc"), text.Get());
    EXPECT_EQ("abc", utf8);
  }
}

TEST(Dom, NarrowTextIsCutToItsBuffer) {
  const dom::Document document = LoadBytes("<A name='channel'/>");
  const dom::Element root = Root(document);
  char buffer[9] = "########";
  ExpectHr(S_OK, root.GetNarrow("name", buffer, 5));
  EXPECT_EQ(0, std::memcmp(buffer, "chan\0###", 9));
  ExpectHr(S_OK, root.GetNarrow("name", buffer, 8));
  EXPECT_STREQ("channel", buffer);
  ExpectHr(S_OK, root.GetNarrow("name", buffer, 1));
  EXPECT_STREQ("", buffer);
}

TEST(Dom, AttributesKeepTheirOrder) {
  const dom::Document document = NewDocumentWithRoot("A");
  const dom::Element root = Root(document);
  ExpectHr(S_OK, root.SetInt("z", 1));
  ExpectHr(S_OK, root.SetNarrow("m", "two"));
  ExpectHr(S_OK, root.SetWide("a", Wide("three").Get()));
  EXPECT_EQ("A[z=1][m=two][a=three]", Describe(root));
  ExpectHr(S_OK, root.SetNarrow("m", "a much longer text than before"));
  ExpectHr(S_OK, root.SetInt("a", std::numeric_limits<std::int32_t>::min()));
  ExpectHr(S_OK, root.SetWide("z", nullptr));
  EXPECT_EQ("A[z=][m=a much longer text than before][a=-2147483648]", Describe(root));
  ExpectHr(S_OK, root.SetNarrow("m", "short"));
  ExpectHr(S_OK, root.SetNarrow("m", "short"));
  EXPECT_EQ("A[z=][m=short][a=-2147483648]", Describe(root));
}

TEST(Dom, AttributesAreFoundInAnyOrder) {
  const dom::Document document = LoadBytes("<A a='1' b='2' c='3' d='4'/>");
  const dom::Element root = Root(document);
  for (const char* name : {"a", "b", "d", "a", "c", "d", "b", "b", "x", "c"}) {
    const std::string expected =
        *name == 'x' ? "(none)" : std::string(1, static_cast<char>(*name - 'a' + '1'));
    EXPECT_EQ(expected, Utf8(root, name)) << name;
  }
}

TEST(Dom, InvalidNamesAreNotWritten) {
  const dom::Document document = NewDocumentWithRoot("A");
  const dom::Element root = Root(document);
  dom::Element element;
  for (const char* name : {"", "1a", "a b", "-a", "a<", "Component index", "a=", "."}) {
    ExpectHr(E_INVALIDARG, root.SetInt(name, 1));
    ExpectHr(E_INVALIDARG, root.SetNarrow(name, "x"));
    ExpectHr(E_INVALIDARG, root.SetWide(name, nullptr));
    ExpectHr(E_INVALIDARG, document.CreateElement(name, element));
  }
  EXPECT_EQ("A", Describe(root));
}

TEST(Dom, LongNamesAndValuesSurvive) {
  const TempDir dir;
  const std::string name(300, 'n');
  const std::string value(100000, 'v');
  dom::Document document = NewDocumentWithRoot(name.c_str());
  ExpectHr(S_OK, Root(document).SetNarrow(name.c_str(), value));
  ExpectHr(S_OK, document.Save(dir.File("a.xml")));
  bool success = false;
  ExpectHr(S_OK, document.Load(dir.File("a.xml"), success));
  EXPECT_EQ(name, Tag(Root(document)));
  EXPECT_EQ(value, Utf8(Root(document), name.c_str()));
}

TEST(Dom, AwkwardTextSurvivesASave) {
  const TempDir dir;
  dom::Document document = NewDocumentWithRoot("A");
  const WideView awkward(
      OLESTR("<a>&amp;\"'\t\r\n\r  x  ]]>--?>%\u00E9\u3042\uFFFD\U0001F4FA\u0080\u007F"));
  ExpectHr(S_OK, Root(document).SetWide("t", Bstr(awkward).Get()));
  ExpectHr(S_OK, document.Save(dir.File("a.xml")));
  bool success = false;
  ExpectHr(S_OK, document.Load(dir.File("a.xml"), success));
  Bstr text;
  ExpectHr(S_OK, Root(document).GetWide("t", text));
  ExpectText(awkward, text.Get());
}

TEST(Dom, WhatIsNoXmlIsNotSaved) {
  const TempDir dir;
  for (const OLECHAR bad : {OLECHAR{1}, OLECHAR{0x1F}, OLECHAR{0xFFFE}, OLECHAR{0xFFFF}}) {
    dir.Write("a.xml", "old");
    const dom::Document document = NewDocumentWithRoot("A");
    const OLECHAR text[] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', bad};
    ExpectHr(S_OK, Root(document).SetWide("t", Bstr(WideView(text, 9)).Get()));
    EXPECT_TRUE(FAILED(document.Save(dir.File("a.xml"))));
    EXPECT_EQ("old", dir.Read("a.xml"));
    EXPECT_EQ(1U, dir.Count());
  }
}

TEST(Dom, ADocumentWithoutAnElementIsNotSaved) {
  const TempDir dir;
  dir.Write("a.xml", "old");
  const dom::Document document = NewDocument();
  EXPECT_TRUE(FAILED(document.Save(dir.File("a.xml"))));
  ExpectHr(S_OK, document.AppendProcessingInstruction("xml", "version='1.0' encoding='utf-8'"));
  EXPECT_TRUE(FAILED(document.Save(dir.File("a.xml"))));
  EXPECT_EQ("old", dir.Read("a.xml"));
}

TEST(Dom, AFailingSaveIsReported) {
  const TempDir dir;
  const dom::Document document = NewDocumentWithRoot("A");
  EXPECT_TRUE(FAILED(document.Save(dir.File("missing") + "/a.xml")));
  EXPECT_TRUE(FAILED(document.Save(dir.Path())));
  EXPECT_EQ(0U, dir.Count());
}

TEST(Dom, CommentsAndTextsAreChildNodes) {
  const dom::Document document =
      LoadBytes("<A>\r\n\t<B/>\r\n\t<C> \r\n </C><D><!--c--></D><E>text</E><F><G/></F></A>");
  dom::Element element;
  const auto hasNodes = [&](const char* path) {
    ExpectHr(S_OK, Root(document).SelectSingle(path, element));
    return element.HasChildNodes();
  };
  EXPECT_FALSE(hasNodes("./B"));
  EXPECT_FALSE(hasNodes("./C")) << "white space alone is no node";
  EXPECT_TRUE(hasNodes("./D"));
  ExpectHr(S_FALSE, element.FirstChildElement(element));
  EXPECT_FALSE(element);
  EXPECT_TRUE(hasNodes("./E"));
  EXPECT_TRUE(hasNodes("./F"));
  ExpectHr(S_OK, element.FirstChildElement(element));
  EXPECT_EQ("G", Tag(element));
  ExpectHr(S_FALSE, element.NextSiblingElement(element));
}

}  // namespace

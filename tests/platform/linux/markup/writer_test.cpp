// The bytes that are written.
//
// Linux only: about the document tree that only Linux has
#include <gtest/gtest.h>

#include <string>

#include "platform/dom.h"
#include "platform/text.h"
#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using namespace dom_tools;

constexpr char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";

std::string Saved(const dom::Document& document) {
  const TempDir dir;
  ExpectHr(S_OK, document.Save(dir.File("a.xml")));
  EXPECT_EQ(1U, dir.Count());
  return dir.Read("a.xml");
}

/// What is written after loading; checks that another round changes nothing.
std::string Rewritten(const std::string& bytes) {
  const std::string once = Saved(LoadBytes(bytes));
  EXPECT_EQ(once, Saved(LoadBytes(once)));
  return once;
}

TEST(DomWriter, WritesWhatWasBuiltOnOneLine) {
  const dom::Document document = NewDocumentWithRoot("CHANNELTABLE");
  EXPECT_EQ(std::string(kDeclaration) + "<CHANNELTABLE/>\r\n", Saved(document));
  const dom::Element country = AddChild(Root(document), "Country");
  ExpectHr(S_OK, country.SetNarrow("name", "Germany"));
  ExpectHr(S_OK, country.SetInt("countrycode", 49));
  ExpectHr(S_OK, AddChild(country, "ChannelSet").SetWide("type", nullptr));
  AddChild(Root(document), "Country");
  EXPECT_EQ(std::string(kDeclaration) +
                "<CHANNELTABLE><Country name=\"Germany\" countrycode=\"49\">"
                "<ChannelSet type=\"\"/></Country><Country/></CHANNELTABLE>\r\n",
            Saved(document));
}

TEST(DomWriter, WritesNoDeclarationThatWasNotThere) {
  const dom::Document document = NewDocument();
  ExpectHr(S_OK, document.AppendChild(NewElement(document, "a")));
  EXPECT_EQ("<a/>\r\n", Saved(document));
  EXPECT_EQ("<a/>\r\n", Rewritten("<a/>"));
}

TEST(DomWriter, KeepsStandalone) {
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<a/>\r\n",
            Rewritten("<?xml version='1.0' standalone='yes'?><a/>"));
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"?>\r\n<a/>\r\n",
            Rewritten("<?xml version='1.0' encoding='ISO-8859-1' standalone='no'?><a/>"));
  EXPECT_EQ(std::string(kDeclaration) + "<a/>\r\n", Rewritten("<?xml version='1.0'?><a/>"));
  const dom::Document document = NewDocument();
  ExpectHr(S_OK, document.AppendProcessingInstruction("xml", "version='1.0' standalone='yes'"));
  ExpectHr(S_OK, document.AppendChild(NewElement(document, "a")));
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<a/>\r\n",
            Saved(document));
}

TEST(DomWriter, EscapesAttributes) {
  const dom::Document document = NewDocumentWithRoot("a");
  const WideView value(OLESTR("<>&\"'\t\r\n \u00E9\u20AC\U0001F4FA"));
  ExpectHr(S_OK, Root(document).SetWide("b", Bstr(value).Get()));
  EXPECT_EQ(
      std::string(kDeclaration) +
          "<a b=\"&lt;>&amp;&quot;'&#9;&#13;&#10; \xC3\xA9\xE2\x82\xAC\xF0\x9F\x93\xBA\"/>\r\n",
      Saved(document));
}

TEST(DomWriter, ReplacesLoneSurrogates) {
  const dom::Document document = NewDocumentWithRoot("a");
  const OLECHAR value[] = {0xD83D, 'x', 0xDCFA, 0xDCFA, 0xD83D};
  ExpectHr(S_OK, Root(document).SetWide("b", Bstr(WideView(value, 5)).Get()));
  EXPECT_EQ("\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", Utf8(Root(document), "b"));
  EXPECT_EQ(1U, Saved(document).find("?xml"));
}

TEST(DomWriter, KeepsCommentsTextsAndInstructions) {
  EXPECT_EQ(
      "<!-- top -->\r\n<?style sheet?>\r\n<a>one<b/> two &lt;&gt;&amp;\"' <![CDATA[<&>]]>"
      "<!-- in --><?empty?></a>\r\n<!-- end -->\r\n",
      Rewritten("<!-- top --><?style   sheet?><a>one<b></b> two &lt;>&amp;&quot;&apos; "
                "<![CDATA[<&>]]><!-- in --><?empty?></a><!-- end -->"));
  EXPECT_EQ("<a>x&#13;\ny</a>\r\n", Rewritten("<a>x&#13;\r\ny</a>"));
  EXPECT_EQ("<a><![CDATA[]]></a>\r\n", Rewritten("<a><![CDATA[]]></a>"));
  EXPECT_EQ("<a>\r\n\t<![CDATA[ ]]></a>\r\n", Rewritten("<a> <![CDATA[ ]]></a>"));
}

TEST(DomWriter, GivesIndentationBack) {
  EXPECT_EQ(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<T>\r\n\t<!-- c -->\r\n\t<C a=\"1\">\r\n\t\t"
      "<S/><S/>\r\n\t</C><D/>\r\n\t<E>text</E>\r\n</T>\r\n",
      Rewritten("<?xml version='1.0' encoding='utf-8'?>\n\n<T>\n  <!-- c -->\n  <C a='1'>\n "
                "<S/><S>  </S>\n</C><D/>\n<E>text</E> </T>"));
}

TEST(DomWriter, IndentsBesideNewElementsOnlyWhatWasIndented) {
  const dom::Document document = LoadBytes("<T>\n <C n='1'/>\n <C n='3'/>\n</T>");
  const dom::Element root = Root(document);
  dom::Element third;
  ExpectHr(S_OK, root.SelectSingle("./C[@n='3']", third));
  ExpectHr(S_OK, root.InsertBefore(NewElement(document, "C"), third));
  EXPECT_EQ("<T>\r\n\t<C n=\"1\"/><C/>\r\n\t<C n=\"3\"/>\r\n</T>\r\n", Saved(document));
}

TEST(DomWriter, AnEmptiedElementForgetsItsIndentation) {
  const dom::Document document = LoadBytes("<T>\n <C/>\n <C/>\n</T>");
  const dom::Element root = Root(document);
  dom::Element child;
  while (root.SelectSingle("./C", child) == S_OK) ExpectHr(S_OK, root.RemoveChild(child));
  EXPECT_EQ("<T/>\r\n", Saved(document));
  AddChild(root, "C");
  EXPECT_EQ("<T><C/></T>\r\n", Saved(document));
}

TEST(DomWriter, ABlankElementIsAnEmptyOne) {
  const dom::Document document = LoadBytes("<T><C>\n \n</C><D> </D></T>");
  const dom::Element root = Root(document);
  EXPECT_EQ("<T><C/><D/></T>\r\n", Saved(document));
  dom::Element child;
  ExpectHr(S_OK, root.SelectSingle("./C", child));
  AddChild(child, "E");
  EXPECT_EQ("<T><C><E/></C><D/></T>\r\n", Saved(document)) << "there was nothing to indent";
}

TEST(DomWriter, AddsNoWhiteSpaceToTexts) {
  const dom::Document document = LoadBytes("<T>text<C/>\n <D/>\n</T>");
  const dom::Element root = Root(document);
  dom::Element child;
  ExpectHr(S_OK, root.SelectSingle("./C", child));
  ExpectHr(S_OK, root.RemoveChild(child));
  EXPECT_EQ("<T>text<D/>\r\n</T>\r\n", Saved(document));
  ExpectHr(S_OK, root.SelectSingle("./D", child));
  ExpectHr(S_OK, root.RemoveChild(child));
  EXPECT_EQ("<T>text</T>\r\n", Saved(document));
}

TEST(DomWriter, RefusesPrefixesThatAreNotDeclared) {
  const TempDir dir;
  const dom::Document document = LoadBytes("<R><a xmlns:p='u'><p:b p:k='1'/><c p:k='1'/></a></R>");
  const dom::Element root = Root(document);
  dom::Element child;
  EXPECT_EQ("<R><a xmlns:p=\"u\"><p:b p:k=\"1\"/><c p:k=\"1\"/></a></R>\r\n", Saved(document));
  for (const char* path : {"./a/p:b", "./a/c"}) {
    dom::Element a;
    ExpectHr(S_OK, root.SelectSingle("./a", a));
    ExpectHr(S_OK, root.SelectSingle(path, child));
    ExpectHr(S_OK, root.AppendChild(child));
    ExpectHr(E_FAIL, document.Save(dir.File("a.xml")));
    ExpectHr(S_OK, a.AppendChild(child));
    ExpectHr(S_OK, document.Save(dir.File("a.xml")));
  }
}

TEST(DomWriter, KeepsDeclarationsAmongTheOtherAttributes) {
  const char* const documents[] = {
      "<a b=\"1\" xmlns=\"urn:d\" c=\"2\" xmlns:p=\"urn:p\" p:d=\"3\"/>",
      "<p:a p:b=\"1\" xmlns:p=\"urn:p\" c=\"xmlns='x' &lt;b xmlns:q=&quot;y&quot;>\"/>",
      "<a xmlns:p=\"u\" b=\"1\"/>",
      "<a b=\"1\" xmlns:p=\"u\"/>",
      "<a b=\"1\"><c d=\"2\" xmlns=\"u\" e=\"3\"/><f xmlnsx=\"4\" xmlns:g=\"v\"/></a>",
      "<\xC3\xA4 \xC3\xB6=\"1\" xmlns:\xC3\xBC=\"u\" \xC3\xBC:a=\"2\"/>",
  };
  for (const char* document : documents) {
    EXPECT_EQ(std::string(document) + "\r\n", Rewritten(document));
  }
  // However the tag is written.
  const std::string kept = "<a b=\"1'\" xmlns=\"u\" c=\"&quot;2\"/>\r\n";
  EXPECT_EQ(kept, Rewritten("<a\tb = \"1'\"\r\nxmlns\n=\n'u' c='\"2'\n></a >"));
  EXPECT_EQ(kept, Rewritten("\xEF\xBB\xBF<a b='1&#39;' xmlns='u' c='&quot;2' />"));
  EXPECT_EQ(std::string(kDeclaration) + kept,
            Rewritten("<?xml version='1.0' encoding='ISO-8859-1'?><a b=\"1'\" xmlns='u' "
                      "c='&#x22;2'/>"));
  // This one is always in force, and no parser reports it.
  EXPECT_EQ("<a b=\"1\" xmlns:p=\"u\" c=\"2\"/>\r\n",
            Rewritten("<a xmlns:xml='http://www.w3.org/XML/1998/namespace' b='1' xmlns:p='u' "
                      "c='2'/>"));
}

TEST(DomWriter, ThePrefixOfXmlNeedsNoDeclaration) {
  EXPECT_EQ("<a xml:lang=\"de\"><b xml:space=\"preserve\"/></a>\r\n",
            Rewritten("<a xml:lang='de'><b xml:space='preserve'/></a>"));
}

TEST(DomWriter, PrefixesComeFromFilesAlone) {
  const dom::Document document = LoadBytes("<R xmlns:p='u'><a p:k='1'/><b/></R>");
  dom::Element child;
  ExpectHr(S_OK, Root(document).SelectSingle("./b", child));
  ExpectHr(E_INVALIDARG, child.SetInt("p:k", 2));
  ExpectHr(S_OK, Root(document).SelectSingle("./a", child));
  ExpectHr(S_OK, child.SetInt("p:k", 2));
  EXPECT_EQ("<R xmlns:p=\"u\"><a p:k=\"2\"/><b/></R>\r\n", Saved(document));
}

TEST(DomWriter, RefusesAttributesThatBecameTheSame) {
  const TempDir dir;
  const dom::Document document = LoadBytes(
      "<R><a xmlns:p='u' xmlns:q='v'><b p:k='1' q:k='2'/></a><a xmlns:p='u' xmlns:q='u'/></R>");
  dom::ElementList parents;
  ExpectHr(S_OK, Root(document).Select("./a", parents));
  dom::Element second;
  dom::Element child;
  ExpectHr(S_OK, parents.Item(1, second));
  ExpectHr(S_OK, Root(document).SelectSingle("./a/b", child));
  ExpectHr(S_OK, document.Save(dir.File("a.xml")));
  ExpectHr(S_OK, second.AppendChild(child));
  ExpectHr(E_FAIL, document.Save(dir.File("a.xml")));
}

TEST(DomWriter, RefusesWhatCouldNotBeLoadedAgain) {
  const TempDir dir;
  const auto save = [&dir](int levels, std::size_t nameLength, std::size_t valueLength) {
    const std::string name(nameLength, 'n');
    const dom::Document document = NewDocumentWithRoot(name.c_str());
    ExpectHr(S_OK, Root(document).SetNarrow(name.c_str(), std::string(valueLength, 'v')));
    dom::Element deepest = Root(document);
    for (int level = 1; level < levels; ++level) deepest = AddChild(deepest, "a");
    const HRESULT hr = document.Save(dir.File("a.xml"));
    if (hr != S_OK) return hr;
    dom::Document loaded = NewDocument();
    bool success = false;
    return loaded.Load(dir.File("a.xml"), success);
  };
  ExpectHr(S_OK, save(256, 10, 10));
  ExpectHr(E_FAIL, save(257, 10, 10));
  ExpectHr(S_OK, save(1, 50000, 10));
  ExpectHr(E_FAIL, save(1, 50001, 10));
  ExpectHr(S_OK, save(1, 10, 10000000));
  ExpectHr(E_FAIL, save(1, 10, 10000001));
}

// Long values are written in pieces, and some characters are known by all of their bytes.
TEST(DomWriter, LongValuesAreCutBetweenCharacters) {
  constexpr std::size_t kPiece = 256 * 1024 / 6;
  const TempDir dir;
  for (std::size_t before = kPiece - 4; before <= kPiece + 1; ++before) {
    const std::string start(before, 'v');
    const std::string end(100, 'w');
    const auto save = [&](const std::string& character) {
      const dom::Document document = NewDocumentWithRoot("a");
      ExpectHr(S_OK, Root(document).SetNarrow("b", start + character + end));
      return document.Save(dir.File("a.xml"));
    };
    for (const char* character : {"\xC3\xA9", "\xEF\xBF\xBD", "\xF0\x9F\x93\xBA"}) {
      ExpectHr(S_OK, save(character));
      const std::string bytes = dir.Read("a.xml");
      EXPECT_EQ(kDeclaration + ("<a b=\"" + start) + character + end + "\"/>\r\n", bytes);
    }
    for (const char* character : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
      ExpectHr(E_FAIL, save(character));
    }
  }
}

TEST(DomWriter, WhatFollowsAForbiddenCharacterExcusesNothing) {
  const TempDir dir;
  for (const char* first : {"\x01", "\xEF\xBF\xBF"}) {
    const dom::Document document = NewDocumentWithRoot("a");
    ExpectHr(S_OK, Root(document).SetNarrow("b", std::string(first) + "\xEF\xBC\xA1 and more"));
    AddChild(Root(document), "c");
    ExpectHr(E_FAIL, document.Save(dir.File("a.xml")));
  }
}

TEST(DomWriter, WritesInstructions) {
  const dom::Document document = NewDocument();
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction("XML", "x"));
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction("1", "x"));
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction("pi", "a?>b"));
  ExpectHr(E_INVALIDARG, document.AppendProcessingInstruction("xml", "encoding='utf-8'"));
  ExpectHr(S_OK, document.AppendProcessingInstruction("xml", "version='1.0'"));
  ExpectHr(E_FAIL, document.AppendProcessingInstruction("xml", "version='1.0'"));
  ExpectHr(S_OK, document.AppendProcessingInstruction("pi", "a='1'"));
  ExpectHr(S_OK, document.AppendChild(NewElement(document, "a")));
  EXPECT_EQ(std::string(kDeclaration) + "<?pi a='1'?>\r\n<a/>\r\n", Saved(document));
  // A declaration stands in front of everything or nowhere.
  for (const char* bytes : {"<a/>", "<?pi?><a/>"}) {
    const dom::Document other = LoadBytes(bytes);
    ExpectHr(E_FAIL, other.AppendProcessingInstruction("xml", "version='1.0'"));
    EXPECT_EQ(std::string::npos, Saved(other).find("?xml"));
  }
}

TEST(DomWriter, WritesLargeDocuments) {
  const dom::Document document = NewDocumentWithRoot("a");
  std::string expected = std::string(kDeclaration) + "<a>";
  for (int i = 0; i < 20000; ++i) {
    ExpectHr(S_OK, AddChild(Root(document), "child").SetInt("number", i));
    expected += "<child number=\"" + std::to_string(i) + "\"/>";
  }
  EXPECT_TRUE(expected + "</a>\r\n" == Saved(document));
}

}  // namespace

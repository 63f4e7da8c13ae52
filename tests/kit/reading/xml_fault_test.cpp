#include "kit/reading/xml_fault.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

std::string FaultOf(std::string_view xml) {
  const std::optional<XmlFault> fault = FindXmlFault(xml);
  if (!fault) return "none";
  return std::to_string(fault->line) + ":" + std::to_string(fault->column) + " " + fault->reason;
}

TEST(XmlFault, FindsNoneWhereThereIsNone) {
  for (const char* xml :
       {"<a/>", "<a b='1' c=\"2\" ><d>text</d></a>\r\n", "<?xml version='1.0'?>\n<a/>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a/>",
        "<!-- <&> --><a><![CDATA[<&>]]>&amp;&#65;&#x41;&lt;</a><!-- -->",
        "<\xC3\xA4 \xC3\xB6='\xE2\x82\xAC'>]] ></\xC3\xA4 >", "<?a ?><a b='>'/>"}) {
    EXPECT_EQ("none", FaultOf(xml)) << xml;
  }
}

TEST(XmlFault, NamesRawMarkup) {
  EXPECT_EQ("1:9 an & stands alone; &amp; is meant", FaultOf("<a b='A & B'/>"));
  EXPECT_EQ("1:5 an & stands alone; &amp; is meant", FaultOf("<a>x&</a>"));
  EXPECT_EQ("1:7 &B; is not known; &amp; may be meant for &", FaultOf("<a b='&B;'/>"));
  EXPECT_EQ("1:4 &#1; is no character of XML", FaultOf("<a>&#1;</a>"));
  EXPECT_EQ("1:4 &#x110000; is no character of XML", FaultOf("<a>&#x110000;</a>"));
  EXPECT_EQ("1:8 a < stands in the value of b; &lt; is meant", FaultOf("<a b='x<y'/>"));
  EXPECT_EQ("1:5 a < begins no element; &lt; is meant", FaultOf("<a>1< 2</a>"));
  EXPECT_EQ("1:9 no attribute begins here; inside of a value &quot; is meant for \"",
            FaultOf("<a b=\"x\"y\" c=\"\"/>"));
  EXPECT_EQ("1:14 no value follows inch; inside of a value &quot; is meant for \"",
            FaultOf("<a b=\"x\" inch\"/>"));
  EXPECT_EQ("1:6 ]]> stands in a text", FaultOf("<a>12]]></a>"));
}

TEST(XmlFault, NamesWhatIsNotClosed) {
  EXPECT_EQ("1:1 the file is empty", FaultOf(""));
  EXPECT_EQ("1:1 the file is empty", FaultOf("\xEF\xBB\xBF"));
  EXPECT_EQ("2:1 the file ends before its first element", FaultOf("<?xml version='1.0'?>\n"));
  EXPECT_EQ("2:4 the file ends before </a>", FaultOf("<a>\n   "));
  EXPECT_EQ("1:8 the file ends before <b> does", FaultOf("<a><b c"));
  EXPECT_EQ("1:11 the file ends before <b> does", FaultOf("<a><b c='d"));
  EXPECT_EQ("1:7 the file ends before </a> does", FaultOf("<a></a"));
  EXPECT_EQ("1:5 the file ends before an element's name", FaultOf("<a><"));
  EXPECT_EQ("3:1 </a> stands where <b> of line 2 is open", FaultOf("<a>\n<b>\n</a>"));
  EXPECT_EQ("1:5 </b> closes nothing", FaultOf("<a/></b>"));
  EXPECT_EQ("2:1 <b> of line 1 is not closed", FaultOf("<a><b\n<c/></a>"));
  EXPECT_EQ("1:4 a comment that does not end", FaultOf("<a><!-- </a>"));
  EXPECT_EQ("1:4 a CDATA section that does not end", FaultOf("<a><![CDATA[</a>"));
  EXPECT_EQ("1:1 an instruction that does not end", FaultOf("<?xml version='1.0'>"));
}

TEST(XmlFault, NamesWhatStandsBesideTheDocument) {
  EXPECT_EQ("1:1 the file does not begin with <", FaultOf("no XML"));
  EXPECT_EQ("1:5 something follows the document's end", FaultOf("<a/>x"));
  EXPECT_EQ("1:5 a second element follows the document's own", FaultOf("<a/><b/>"));
  EXPECT_EQ("2:1 the XML declaration does not stand at the beginning",
            FaultOf("\n<?xml version='1.0'?><a/>"));
}

TEST(XmlFault, NamesAttributesThatAreNone) {
  EXPECT_EQ("1:10 b stands twice in <a>", FaultOf("<a b='1' b='2'/>"));
  EXPECT_EQ("1:6 the value of b is not quoted", FaultOf("<a b=1/>"));
}

TEST(XmlFault, NamesCharactersThatXmlDoesNotHave) {
  EXPECT_EQ("1:8 XML has no character U+0001", FaultOf("<a b='x\x01'/>"));
  EXPECT_EQ("1:4 XML has no character U+FFFE", FaultOf("<a>\xEF\xBF\xBE</a>"));
  EXPECT_EQ("1:5 XML has no character U+0000", FaultOf(std::string_view("<a>x\0</a>", 9)));
  EXPECT_EQ("1:5 these bytes are no UTF-8", FaultOf("<a>\xC3\xA4\xE4</a>"));
  // What comes first counts.
  EXPECT_EQ("1:4 an & stands alone; &amp; is meant", FaultOf("<a>& \x01</a>"));
  EXPECT_EQ("1:5 XML has no character U+0001", FaultOf("<a>x\x01 &"));
}

TEST(XmlFault, CountsColumnsInCharactersAndEveryKindOfLine) {
  EXPECT_EQ("1:10 an & stands alone; &amp; is meant",
            FaultOf("<a b='\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\xBA& '/>"));
  EXPECT_EQ("4:3 an & stands alone; &amp; is meant", FaultOf("<a>\n\r\n\r  & </a>"));
  EXPECT_EQ("1:4 an & stands alone; &amp; is meant", FaultOf("\xEF\xBB\xBF<a>& </a>"));
}

TEST(XmlFault, NamesWhatSomeParsersTakeOnlyWhereNothingElseIsWrong) {
  EXPECT_EQ("1:1 a document type (DTD) is not allowed",
            FaultOf("<!DOCTYPE a [<!ENTITY b 'c'>]><a/>"));
  EXPECT_EQ("1:17 an & stands alone; &amp; is meant", FaultOf("<!DOCTYPE a><a> & </a>"));
  std::string deep;
  for (int i = 0; i < 257; ++i) deep += "<a>";
  for (int i = 0; i < 257; ++i) deep += "</a>";
  EXPECT_EQ("1:769 elements stand in more than 256 levels", FaultOf(deep));
  EXPECT_EQ("none", FaultOf(deep.substr(3, deep.size() - 7)));
  std::string wide = "<a";
  for (int i = 0; i < 1025; ++i) wide += " a" + std::to_string(i) + "=''";
  EXPECT_NE(std::string::npos,
            FaultOf(wide + "/>").find("an element has more than 1024 attributes"));
}

TEST(XmlFault, KnowsThatThereAreOtherEncodings) {
  EXPECT_EQ("1:1 its encoding 'EBCDIC' is not known, or has other characters",
            FaultOf("<?xml version='1.0' encoding='EBCDIC'?><a/>"));
  // Bytes of these are characters: a column each.
  EXPECT_EQ("1:50 an & stands alone; &amp; is meant",
            FaultOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4\xF6 & </a>"));
  EXPECT_EQ("none", FaultOf("\xFF\xFE<"));
  EXPECT_EQ("none", FaultOf(std::string_view("<\0a\0", 4)));
}

}  // namespace

}  // namespace zortunedex::kit

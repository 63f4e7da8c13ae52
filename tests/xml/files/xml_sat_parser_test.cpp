#include "xml/files/xml_sat_parser.h"

#include <gtest/gtest.h>

#include <string>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr char kCatalogue[] = "SatelliteInfo.xml";

class XmlSatParser : public testing::Test {
 protected:
  HRESULT Open(const std::string& xml) {
    m_dir.Write(kCatalogue, xml);
    return OpenFile();
  }
  HRESULT OpenFile() {
    ExpectHr(S_OK, m_parser.Open(m_dir.File(kCatalogue)));
    return m_parser.Load();
  }
  dom::Element SatTable() {
    dom::Element table;
    ExpectHr(S_OK, m_parser.GetSatTable(&table));
    return table;
  }
  /// The document element, through which everything is reached.
  static dom::Element RootOf(const dom::Element& element) {
    dom::Document document;
    ExpectHr(S_OK, element.OwnerDocument(document));
    dom::Element root;
    ExpectHr(S_OK, document.DocumentElement(root));
    return root;
  }
  void ExpectNoTables() {
    dom::Element table;
    ExpectHr(E_FAIL, m_parser.GetSatTable(&table));
    ExpectHr(E_FAIL, m_parser.GetLNBTable(&table));
    ExpectHr(E_FAIL, m_parser.GetSatTable(nullptr));
    EXPECT_FALSE(table);
  }

  TempDir m_dir;
  CXmlSatParser m_parser;
};

using Getter = HRESULT (*)(const dom::Element&, LONG, dom::Element*);
using Counter = HRESULT (*)(const dom::Element&, LONG*);
struct Kind {
  const char* tag;
  Counter count;
  Getter get;
};
constexpr Kind kKinds[] = {
    {"Satellite", CXmlSatParser::CountSatellites, CXmlSatParser::GetSatellite},
    {"Transponder", CXmlSatParser::CountTransponders, CXmlSatParser::GetTransponder},
    {"LNB", CXmlSatParser::CountLNBs, CXmlSatParser::GetLNB},
};

}  // namespace

TEST_F(XmlSatParser, WithoutADocument) {
  ExpectHr(E_FAIL, m_parser.Load());
  ExpectHr(E_FAIL, m_parser.Save());
  m_parser.SetDirty(true);
  ExpectHr(E_FAIL, m_parser.Save());
  ExpectNoTables();
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(XmlSatParser, MissingAndMalformedFiles) {
  ExpectHr(S_FALSE, OpenFile());
  ExpectNoTables();
  EXPECT_EQ(0U, m_dir.Count()) << "no empty document is made";
  for (const char* bytes : {"", "no xml", "<a><b></a>", "<a/><b/>"}) {
    ExpectHr(S_FALSE, Open(bytes));
    ExpectNoTables();
    EXPECT_EQ(bytes, m_dir.Read(kCatalogue));
  }
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(XmlSatParser, AFailedLoadKeepsTheDirtyFlag) {
  ExpectHr(S_OK, Open("<a/>"));
  m_parser.SetDirty(true);
  m_dir.Write(kCatalogue, "broken");
  ExpectHr(S_FALSE, m_parser.Load());
  EXPECT_TRUE(m_parser.IsDirty());
  ExpectNoTables();
  m_dir.Write(kCatalogue, "<a/>");
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_FALSE(m_parser.IsDirty());
}

TEST_F(XmlSatParser, TablesAreFoundOrMade) {
  ExpectHr(S_OK, Open("<Any><Other/><SAT_TABLE n='1'/><SAT_TABLE n='2'/></Any>"));
  EXPECT_EQ("1", Attribute(SatTable(), "n"));
  const dom::Element root = RootOf(SatTable());
  EXPECT_EQ(0, Count(root, "./LNB_TABLE"));
  dom::Element lnbs;
  ExpectHr(S_OK, m_parser.GetLNBTable(&lnbs));
  dom::Element again;
  ExpectHr(S_OK, m_parser.GetLNBTable(&again));
  EXPECT_EQ(
      "<Any>\n\t<Other/>\n\t<SAT_TABLE n=\"1\"/>\n\t<SAT_TABLE n=\"2\"/>\n\t<LNB_TABLE/>\n"
      "</Any>\n",
      Formatted(root));
  ExpectHr(S_OK, again.SetInt("n", 3));
  EXPECT_EQ("3", Attribute(lnbs, "n"));
  EXPECT_FALSE(m_parser.IsDirty());
}

TEST_F(XmlSatParser, NullIsAnsweredAfterTheTableWasMade) {
  ExpectHr(S_OK, Open("<Any/>"));
  ExpectHr(E_POINTER, m_parser.GetSatTable(nullptr));
  ExpectHr(E_POINTER, m_parser.GetLNBTable(nullptr));
  EXPECT_EQ("<Any>\n\t<SAT_TABLE/>\n\t<LNB_TABLE/>\n</Any>\n", Formatted(RootOf(SatTable())));
}

// The reverse of the channel file's test.
TEST_F(XmlSatParser, SavesUnlessDirty) {
  ExpectHr(S_OK, Open("<Any/>"));
  SatTable();
  m_parser.SetDirty(true);
  ExpectHr(S_FALSE, m_parser.Save());
  EXPECT_EQ("<Any/>", m_dir.Read(kCatalogue));
  m_parser.SetDirty(false);
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_NE("<Any/>", m_dir.Read(kCatalogue));
  EXPECT_FALSE(m_parser.IsDirty());
  const dom::Element root = RootOf(SatTable());
  EXPECT_EQ(1, Count(root, "./SAT_TABLE"));
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_EQ("<Any>\n\t<SAT_TABLE/>\n</Any>\n", Formatted(RootOf(SatTable())));
}

TEST_F(XmlSatParser, ThePreFormattedFormIsNotUsed) {
  ExpectHr(S_OK, Open("<Any a='1&amp;2'/>"));
  ExpectHr(S_OK, m_parser.SetPreFormatted(true));
  // The change marks it dirty.
  ExpectHr(S_FALSE, m_parser.Save());
  m_parser.SetDirty(false);
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_NE(std::string::npos, m_dir.Read(kCatalogue).find("1&amp;2"));
}

TEST_F(XmlSatParser, AFailedSaveIsNotReported) {
  ExpectHr(S_OK, Open("<Any/>"));
  SatTable();
  const std::filesystem::path path = m_dir.File(kCatalogue);
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST_F(XmlSatParser, CountsAndItems) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.tag);
    const std::string tag = kind.tag;
    const TextDocument document("<T><" + tag + " n='0'/><Other/><" + tag + " n='1'/><Sub><" + tag +
                                "/></Sub></T>");
    LONG count = 77;
    ExpectHr(S_OK, kind.count(document.root, &count));
    EXPECT_EQ(2, count);
    dom::Element element;
    for (LONG position : {0, 1}) {
      ExpectHr(S_OK, kind.get(document.root, position, &element));
      EXPECT_EQ(std::to_string(position), Attribute(element, "n"));
    }
    ExpectHr(E_INVALIDARG, kind.get(document.root, 2, &element));
    ExpectHr(E_POINTER, kind.get(document.root, -1, &element));
    ExpectHr(E_POINTER, kind.get(document.root, 0, nullptr));
    ExpectHr(E_POINTER, kind.get({}, 0, &element));
    ExpectHr(E_POINTER, kind.count(document.root, nullptr));
    ExpectHr(E_POINTER, kind.count({}, &count));
    EXPECT_EQ(2, count);
    const TextDocument empty("<T/>");
    ExpectHr(S_OK, kind.count(empty.root, &count));
    EXPECT_EQ(0, count);
    ExpectHr(E_INVALIDARG, kind.get(empty.root, 0, &element));
  }
}

TEST_F(XmlSatParser, BandElements) {
  const TextDocument document(
      "<S><Ku-Band n='ku1'/><C-Band n='c1'/><C-Band n='c2'/><Ka-Band/><X><Ku-Band/></X></S>");
  dom::Element band;
  ExpectHr(S_OK, CXmlSatParser::GetBandElement(SatFreqBand_CBand, document.root, &band));
  EXPECT_EQ("c1", Attribute(band, "n"));
  ExpectHr(S_OK, CXmlSatParser::GetBandElement(SatFreqBand_KuBand, document.root, &band));
  EXPECT_EQ("ku1", Attribute(band, "n"));
  for (const int other : {0, 3, 4, -1}) {
    ExpectHr(E_FAIL,
             CXmlSatParser::GetBandElement(static_cast<ESatFreqBand>(other), document.root, &band));
  }
  const TextDocument without("<S><c-band/></S>");
  ExpectHr(E_FAIL, CXmlSatParser::GetBandElement(SatFreqBand_CBand, without.root, &band));
  ExpectHr(E_POINTER, CXmlSatParser::GetBandElement(SatFreqBand_CBand, without.root, nullptr));
  ExpectHr(E_POINTER, CXmlSatParser::GetBandElement(SatFreqBand_CBand, {}, &band));
}

// The channel file as a whole: what loading makes of any file, and what saving leaves behind.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/registry_sandbox.h"
#include "support/temp_dir.h"
#include "xml/codecs/sample_channels.h"
#include "xml/files/file_header.h"
#include "xml/files/xml_chan_parser.h"

namespace {

const std::string kEmptyTable = kHeader + "<CHANNELTABLE>\r\n</CHANNELTABLE>\r\n";

class ChanFile : public testing::Test {
 protected:
  void Write(const std::string& bytes) const { m_dir.Write("ChanInfo.xml", bytes); }
  std::string Read() const { return m_dir.Read("ChanInfo.xml"); }
  void Load() {
    ExpectHr(S_OK, m_parser.Open(m_dir.File("ChanInfo.xml")));
    ExpectHr(S_OK, m_parser.Load());
  }
  void Load(const std::string& bytes) {
    Write(bytes);
    Load();
  }
  HRESULT Save(bool preFormatted = false) {
    m_parser.SetPreFormatted(preFormatted);
    m_parser.SetDirty(true);
    return m_parser.Save();
  }
  /// The tree that a save would write, one element a line.
  std::string Tree() {
    dom::Element country;
    ExpectHr(S_OK, m_parser.FindOrCreateCountry(4242, &country));
    dom::Document document;
    ExpectHr(S_OK, country.OwnerDocument(document));
    dom::Element root;
    ExpectHr(S_OK, document.DocumentElement(root));
    ExpectHr(S_OK, root.RemoveChild(country));
    return Formatted(root);
  }
  void ExpectEmptyTable(const std::string& what) {
    EXPECT_EQ("<CHANNELTABLE>\n</CHANNELTABLE>\n", Tree()) << what;
  }

  RegistrySandbox m_registry;
  TempDir m_dir;
  CXmlChanParser m_parser;
};

}  // namespace

TEST_F(ChanFile, MissingFileIsAnEmptyTable) {
  Load();
  EXPECT_FALSE(m_parser.IsDirty());
  EXPECT_EQ(0U, m_dir.Count()) << "loading writes nothing";
  ExpectHr(S_OK, Save(true));
  EXPECT_EQ(kEmptyTable, Read());
}

TEST_F(ChanFile, EmptyFileIsAnEmptyTable) {
  Load("");
  ExpectEmptyTable("");
  ExpectHr(S_OK, Save(true));
  EXPECT_EQ(kEmptyTable, Read());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(ChanFile, CleanSaveTouchesNothing) {
  const std::string bytes = "<CHANNELTABLE><Country countrycode='1'/></CHANNELTABLE>";
  Load(bytes);
  ExpectHr(S_FALSE, m_parser.Save());
  EXPECT_EQ(bytes, Read());
  EXPECT_NE(std::string::npos, Tree().find("countrycode=\"1\"")) << "nothing was pruned either";
}

TEST_F(ChanFile, SaveLeavesTheFlagAndLoadClearsIt) {
  Load("<CHANNELTABLE/>");
  ExpectHr(S_OK, Save());
  EXPECT_TRUE(m_parser.IsDirty());
  ExpectHr(S_OK, m_parser.Save());
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_FALSE(m_parser.IsDirty());
  m_parser.SetDirty(true);
  Write("broken");
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_FALSE(m_parser.IsDirty()) << "also by a load that finds nothing to read";
}

TEST_F(ChanFile, LoadReplacesWhatWasLoaded) {
  Load("<CHANNELTABLE><Country countrycode='1'><ChannelSet/></Country></CHANNELTABLE>");
  Write("<CHANNELTABLE/>");
  ExpectHr(S_OK, m_parser.Load());
  ExpectEmptyTable("second load");
  Write("<CHANNELTABLE><Country countrycode='7'><ChannelSet/></Country></CHANNELTABLE>");
  ExpectHr(S_OK, m_parser.Load());
  std::filesystem::remove(m_dir.File("ChanInfo.xml"));
  ExpectHr(S_OK, m_parser.Load());
  ExpectEmptyTable("third load");
}

TEST_F(ChanFile, TruncatedFilesAreEmptyTables) {
  const std::string whole = GoldenFile("dvbs.xml");
  const std::size_t end = whole.rfind('>');
  ASSERT_NE(std::string::npos, end);
  for (std::size_t length = 0; length <= end; length += length < 60 ? 1 : 23) {
    Load(whole.substr(0, length));
    ExpectEmptyTable("cut to " + std::to_string(length) + " bytes");
  }
  Load(whole.substr(0, end));
  ExpectEmptyTable("without the last character");
  Load(whole.substr(0, end + 1));
  EXPECT_NE(std::string::npos, Tree().find("SatelliteParams")) << "only the line end is missing";
}

TEST_F(ChanFile, MalformedFilesAreEmptyTables) {
  for (const char* bytes : {
           "x",
           "   \r\n\t ",
           "<CHANNELTABLE>",
           "<CHANNELTABLE></channeltable>",
           "<CHANNELTABLE/><CHANNELTABLE/>",
           "<CHANNELTABLE/>text",
           "<CHANNELTABLE a='1' a='2'/>",
           "<CHANNELTABLE a=1/>",
           "<CHANNELTABLE a='1'b='2'/>",
           "<CHANNELTABLE a='A&B'/>",
           "<CHANNELTABLE a='A<B'/>",
           "<CHANNELTABLE a='&nosuch;'/>",
           "<CHANNELTABLE a='&#1;'/>",
           "<Channel name=\"A\"B\"/>",
           "<CHANNELTABLE><!-- -- --></CHANNELTABLE>",
           " <?xml version='1.0'?><CHANNELTABLE/>",
           "<?xml version='1.0' encoding='no-such-code'?><CHANNELTABLE/>",
           "<CHANNELTABLE a='\xFF'/>",
           "<CHANNELTABLE a='\xC3'/>",
       }) {
    Load(bytes);
    ExpectEmptyTable(bytes);
  }
}

TEST_F(ChanFile, UnreadableFileIsKeptBesideTheNewOne) {
  const std::string broken = GoldenFile("dvbs.xml").substr(0, 1000);
  for (const bool preFormatted : {false, true}) {
    const TempDir dir;
    dir.Write("ChanInfo.xml", broken);
    CXmlChanParser parser;
    ExpectHr(S_OK, parser.Open(dir.File("ChanInfo.xml")));
    ExpectHr(S_OK, parser.Load());
    EXPECT_EQ(1U, dir.Count());
    parser.SetPreFormatted(preFormatted);
    parser.SetDirty(true);
    ExpectHr(S_OK, parser.Save());
    EXPECT_EQ(broken, dir.Read("ChanInfo.xml.unreadable"));
    EXPECT_NE(broken, dir.Read("ChanInfo.xml"));
    ExpectHr(S_OK, parser.Save());
    EXPECT_EQ(2U, dir.Count()) << "kept once";
  }
}

TEST_F(ChanFile, AnotherRootIsKept) {
  Load("<OTHER a='1'><Country countrycode='1'><ChannelSet/></Country><Country/></OTHER>");
  ExpectHr(S_OK, Save(true));
  EXPECT_EQ(kHeader +
                "<OTHER a=\"1\">\r\n\t<Country countrycode=\"1\">\r\n\t\t<ChannelSet>\r\n"
                "\t\t</ChannelSet>\r\n\t</Country>\r\n</OTHER>\r\n",
            Read());
}

TEST_F(ChanFile, DirectoryInTheWay) {
  std::filesystem::create_directory(m_dir.File("ChanInfo.xml"));
  Load();
  ExpectEmptyTable("a directory");
  ExpectHr(S_OK, Save(false));  // the outcome of a plain save is not reported
  ExpectHr(E_FAIL, Save(true));
  EXPECT_TRUE(std::filesystem::is_directory(m_dir.File("ChanInfo.xml")));
  EXPECT_TRUE(std::filesystem::is_empty(m_dir.File("ChanInfo.xml")));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(ChanFile, MissingDirectory) {
  ExpectHr(S_OK, m_parser.Open(m_dir.File("missing/ChanInfo.xml")));
  ExpectHr(S_OK, m_parser.Load());
  ExpectHr(S_OK, Save(false));
  ExpectHr(E_FAIL, Save(true));
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(ChanFile, PlainFormLoadsBack) {
  Load(
      "<CHANNELTABLE><Country name='A&amp;B &lt;&quot;&apos;&gt;' countrycode='1'><ChannelSet>"
      "<Channel index='1' name='tab&#9;line&#10;return&#13;end'/></ChannelSet></Country>"
      "</CHANNELTABLE>");
  const std::string tree = Tree();
  ExpectHr(S_OK, Save(false));
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_EQ(tree, Tree());
  EXPECT_NE(std::string::npos, tree.find("name=\"A&B <\"'>\"")) << tree;
}

TEST_F(ChanFile, WhatIsNotOursSurvivesAPlainSave) {
  Load(
      "<CHANNELTABLE x='1'><Note t='2'/><Country countrycode='1' y='3'><ChannelSet z='4'>"
      "<!-- remark --><Channel q='5'><Mine/></Channel></ChannelSet></Country></CHANNELTABLE>");
  const std::string tree = Tree();
  ExpectHr(S_OK, Save(false));
  EXPECT_NE(std::string::npos, Read().find("<!-- remark -->"));
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_EQ(tree, Tree());
}

TEST_F(ChanFile, PreFormattedFormHoldsElementsAndAttributesOnly) {
  Load(
      "<CHANNELTABLE><!-- remark --><Country countrycode='1'><ChannelSet>text</ChannelSet>"
      "</Country></CHANNELTABLE>");
  ExpectHr(S_OK, Save(true));
  EXPECT_EQ(kHeader +
                "<CHANNELTABLE>\r\n\t<Country countrycode=\"1\">\r\n\t\t<ChannelSet>\r\n"
                "\t\t</ChannelSet>\r\n\t</Country>\r\n</CHANNELTABLE>\r\n",
            Read());
}

TEST_F(ChanFile, PreFormattedValuesAreRaw) {
  Load(
      "<CHANNELTABLE><Country name='A&amp;B' countrycode='1'><ChannelSet type='&lt;&quot;'/>"
      "</Country></CHANNELTABLE>");
  ExpectHr(S_OK, Save(true));
  const std::string raw = Read();
  EXPECT_NE(std::string::npos, raw.find("<Country name=\"A&B\" countrycode=\"1\">")) << raw;
  EXPECT_NE(std::string::npos, raw.find("<ChannelSet type=\"<\"\">")) << raw;
  // Such a file cannot be read back; the next save keeps it.
  ExpectHr(S_OK, m_parser.Load());
  ExpectEmptyTable("raw values");
  ExpectHr(S_OK, Save(true));
  EXPECT_EQ(raw, m_dir.Read("ChanInfo.xml.unreadable"));
}

TEST_F(ChanFile, PreFormattedBodyThatDoesNotFit) {
  std::string name;
  for (int i = 0; i < 300; ++i) name += "\xE6\x97\xA5";  // three bytes, one unit
  const std::string bytes = "<CHANNELTABLE><Country name='" + name +
                            "' countrycode='81'><ChannelSet/></Country></CHANNELTABLE>";
  Load(bytes);
  ExpectHr(E_FAIL, Save(true));
  EXPECT_EQ(bytes, Read());
  EXPECT_EQ(1U, m_dir.Count());
  ExpectHr(S_OK, Save(false));
  EXPECT_NE(bytes, Read()) << "the plain form has no such limit";
  EXPECT_NE(std::string::npos, Read().find(name));
}

TEST_F(ChanFile, SavePrunesCountriesWithoutChannelSets) {
  Load(
      "<CHANNELTABLE><Country countrycode='1'/><Country countrycode='44'>"
      "<ChannelSet inputSignalType='1'/></Country><Country countrycode='49'/></CHANNELTABLE>");
  dom::Element country;
  ExpectHr(S_OK, m_parser.FindOrCreateCountry(81, &country));
  ExpectHr(S_OK, Save(false));
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_EQ(
      "<CHANNELTABLE>\n\t<Country countrycode=\"44\">\n\t\t<ChannelSet inputSignalType=\"1\">\n"
      "\t\t</ChannelSet>\n\t</Country>\n</CHANNELTABLE>\n",
      Tree());
}

TEST_F(ChanFile, ChannelSetsStayWhenEmpty) {
  Load("<CHANNELTABLE/>");
  dom::Element country;
  dom::Element set;
  ExpectHr(S_OK, m_parser.FindOrCreateCountry(49, &country));
  ExpectHr(S_OK, CXmlChanParser::FindChannelSet(country, InputSignalFMRadio, &set, true));
  ExpectHr(S_OK, Save(true));
  EXPECT_EQ(kHeader +
                "<CHANNELTABLE>\r\n\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
                "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n"
                "\t\t</ChannelSet>\r\n\t</Country>\r\n</CHANNELTABLE>\r\n",
            Read());
}

TEST_F(ChanFile, NewDocumentAddsNothingToOneWithARoot) {
  Load("<CHANNELTABLE><Country countrycode='1'/></CHANNELTABLE>");
  EXPECT_TRUE(FAILED(m_parser.CreateNewDocument())) << "a document has one root";
  EXPECT_EQ("<CHANNELTABLE>\n\t<Country countrycode=\"1\">\n\t</Country>\n</CHANNELTABLE>\n",
            Tree());
}

TEST_F(ChanFile, PreFormattedSaveWithoutARoot) {
  ExpectHr(S_OK, m_parser.Open(m_dir.File("ChanInfo.xml")));
  EXPECT_TRUE(FAILED(Save(true)));
  EXPECT_EQ(0U, m_dir.Count());
}

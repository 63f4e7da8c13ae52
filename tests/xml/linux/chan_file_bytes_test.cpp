// What the channel file is byte for byte, and what the file system may have in store for it.
//
// Linux only: MSXML writes other bytes, and Wine others again
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/linux/child.h"
#include "support/temp_dir.h"
#include "xml/codecs/sample_channels.h"
#include "xml/files/file_header.h"
#include "xml/files/xml_chan_parser.h"

namespace {

namespace fs = std::filesystem;

const std::string kTable =
    "<CHANNELTABLE><Country countrycode=\"1\"><ChannelSet/></Country></CHANNELTABLE>";

class ChanFileBytes : public testing::Test {
 protected:
  void Load(const std::string& bytes) {
    m_dir.Write("ChanInfo.xml", bytes);
    ExpectHr(S_OK, m_parser.Open(Path()));
    ExpectHr(S_OK, m_parser.Load());
  }
  HRESULT Save(bool preFormatted = false) {
    m_parser.SetPreFormatted(preFormatted);
    m_parser.SetDirty(true);
    return m_parser.Save();
  }
  std::string Path() const { return m_dir.File("ChanInfo.xml"); }
  std::string Read() const { return m_dir.Read("ChanInfo.xml"); }
  bool IsEmptyTable() {
    dom::Element country;
    ExpectHr(S_OK, m_parser.FindOrCreateCountry(4242, &country));
    dom::Element set;
    return CXmlChanParser::FindChannelSet(country, InputSignalFMRadio, &set, false) == E_FAIL &&
           Save(true) == S_OK && Read() == kHeader + "<CHANNELTABLE>\r\n</CHANNELTABLE>\r\n";
  }

  TempDir m_dir;
  CXmlChanParser m_parser;
};

std::string Nested(int depth) {
  std::string open;
  std::string close;
  for (int i = 0; i < depth; ++i) {
    open += "<a>";
    close += "</a>";
  }
  return open + close;
}

/// Loads and saves as a host without rights on other users' files; true when the results are those
/// of a file that cannot be written.
bool CannotSave(const std::string& path) {
  CXmlChanParser parser;
  if (parser.Open(path) != S_OK || parser.Load() != S_OK) return false;
  parser.SetDirty(true);
  if (parser.Save() != S_OK) return false;
  parser.SetPreFormatted(true);
  return parser.Save() == E_FAIL;
}

}  // namespace

TEST(ChannelCodecBytes, PlainForm) {
  for (const Sample& sample : Samples()) {
    EXPECT_EQ(GoldenFile(std::string(sample.file) + ".xml"), SavedSample(sample, false));
  }
}

TEST_F(ChanFileBytes, PlainFormOfAnEmptyTable) {
  Load("");
  ExpectHr(S_OK, Save());
  EXPECT_EQ(kHeader + "<CHANNELTABLE/>\r\n", Read());
}

TEST_F(ChanFileBytes, PlainFormEscapes) {
  Load(
      "<CHANNELTABLE><Country name='&amp;&lt;&gt;&quot;&apos;&#9;&#10;&#13;\xC3\xA4'>"
      "<ChannelSet/></Country></CHANNELTABLE>");
  ExpectHr(S_OK, Save());
  EXPECT_EQ(
      "<CHANNELTABLE><Country name=\"&amp;&lt;>&quot;'&#9;&#10;&#13;\xC3\xA4\">"
      "<ChannelSet/></Country></CHANNELTABLE>\r\n",
      Read())
      << "a file without a declaration gets none";
}

TEST_F(ChanFileBytes, IndentationComesBackAsTabs) {
  Load(
      "<CHANNELTABLE>\n  <Country>\n    <ChannelSet>\n      <Channel/>\n    </ChannelSet>\n"
      "  </Country>\n</CHANNELTABLE>\n");
  ExpectHr(S_OK, Save());
  EXPECT_EQ(
      "<CHANNELTABLE>\r\n\t<Country>\r\n\t\t<ChannelSet>\r\n\t\t\t<Channel/>\r\n\t\t"
      "</ChannelSet>\r\n\t</Country>\r\n</CHANNELTABLE>\r\n",
      Read());
}

TEST_F(ChanFileBytes, CutAnywhereIsAnEmptyTable) {
  const std::string whole = GoldenFile("tdmb.xml");
  for (std::size_t length = 0; length <= whole.rfind('>') && !HasFailure(); ++length) {
    Load(whole.substr(0, length));
    dom::Element country;
    ExpectHr(S_OK, m_parser.FindOrCreateCountry(49, &country));
    EXPECT_FALSE(country.HasChildNodes()) << "cut to " << length << " bytes";
  }
}

// On Windows a document type is read over; here no file can bring entities along.
TEST_F(ChanFileBytes, DocumentTypesAreRefused) {
  Load("<!DOCTYPE CHANNELTABLE>" + kTable);
  EXPECT_TRUE(IsEmptyTable());
  Load("<!DOCTYPE a [<!ENTITY x 'y'>]><CHANNELTABLE><Country a='&x;'/></CHANNELTABLE>");
  EXPECT_TRUE(IsEmptyTable());
  EXPECT_TRUE(m_dir.Has("ChanInfo.xml.unreadable"));
  EXPECT_TRUE(m_dir.Has("ChanInfo.xml.unreadable.2"));
}

// Not every implementation on Windows minds.
TEST_F(ChanFileBytes, UnboundPrefixesAreRefused) {
  Load("<CHANNELTABLE p:a='1'/>");
  EXPECT_TRUE(IsEmptyTable());
  Load("<p:CHANNELTABLE/>");
  EXPECT_TRUE(IsEmptyTable());
}

TEST_F(ChanFileBytes, NestingHasALimit) {
  Load("<CHANNELTABLE><Country><ChannelSet>" + Nested(100000) +
       "</ChannelSet></Country></CHANNELTABLE>");
  EXPECT_TRUE(IsEmptyTable());
}

TEST_F(ChanFileBytes, CharacterThatNoXmlCanHold) {
  Load(kTable);
  dom::Element country;
  ExpectHr(S_OK, m_parser.FindOrCreateCountry(1, &country));
  const OLECHAR name[] = {'a', 1, 'b'};
  ExpectHr(S_OK, country.SetWide("name", Bstr(WideView(name, 3)).Get()));
  ExpectHr(S_OK, Save());
  EXPECT_EQ(kTable, Read()) << "the plain form keeps the old file";
  EXPECT_EQ(1U, m_dir.Count());
  ExpectHr(S_OK, Save(true));
  EXPECT_NE(std::string::npos, Read().find("name=\"a\x01"
                                           "b\""))
      << "the pre-formatted form writes what it has";
}

TEST_F(ChanFileBytes, SymbolicLinkIsFollowed) {
  m_dir.Write("real.xml", kTable);
  fs::create_symlink("real.xml", Path());
  ExpectHr(S_OK, m_parser.Open(Path()));
  ExpectHr(S_OK, m_parser.Load());
  ExpectHr(S_OK, Save(true));
  EXPECT_TRUE(fs::is_symlink(Path()));
  EXPECT_NE(kTable, m_dir.Read("real.xml"));
  EXPECT_EQ(2U, m_dir.Count());
}

TEST_F(ChanFileBytes, ReadOnlyDirectory) {
  Load(kTable);
  ASSERT_EQ(0, chmod(Path().c_str(), 0666));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0555));
  EXPECT_TRUE(AsNobody([this] { return CannotSave(Path()); }));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0755));
  EXPECT_EQ(kTable, Read());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(ChanFileBytes, ReadOnlyFile) {
  Load(kTable);
  ASSERT_EQ(0, chmod(Path().c_str(), 0444));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0777));
  EXPECT_TRUE(AsNobody([this] { return CannotSave(Path()); }));
  EXPECT_EQ(kTable, Read());
  EXPECT_EQ(1U, m_dir.Count());
}

// What may not be read cannot be kept either, so it must not be replaced.
TEST_F(ChanFileBytes, FileThatMayNotBeRead) {
  Load(kTable);
  ASSERT_EQ(0, chmod(Path().c_str(), 0200));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0777));
  EXPECT_TRUE(AsNobody([this] { return CannotSave(Path()); }));
  ASSERT_EQ(0, chmod(Path().c_str(), 0600));
  EXPECT_EQ(kTable, Read());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(ChanFileBytes, UnreadableFileThatCannotBeKept) {
  Load("broken");
  ASSERT_EQ(0, chmod(Path().c_str(), 0666));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0555));
  EXPECT_TRUE(AsNobody([this] { return CannotSave(Path()); }));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0755));
  EXPECT_EQ("broken", Read());
  EXPECT_EQ(1U, m_dir.Count());
}

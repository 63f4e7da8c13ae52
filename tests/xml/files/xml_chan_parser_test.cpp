#include "xml/files/xml_chan_parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/fake_channel.h"
#include "support/registry_sandbox.h"
#include "support/temp_dir.h"

namespace {

/// A channel file with its parser; the registry names no country.
class XmlChanParser : public testing::Test {
 protected:
  void Open(const std::string& xml) {
    m_dir.Write("ChanInfo.xml", xml);
    ExpectHr(S_OK, m_parser.Open(m_dir.File("ChanInfo.xml")));
    ExpectHr(S_OK, m_parser.Load());
  }
  dom::Element Country(DWORD code) {
    dom::Element country;
    ExpectHr(S_OK, m_parser.FindOrCreateCountry(code, &country));
    return country;
  }
  dom::Element Set(const dom::Element& country, InputSignalType type) {
    dom::Element set;
    ExpectHr(S_OK, CXmlChanParser::FindChannelSet(country, type, &set, true));
    return set;
  }
  dom::Element Root() {
    dom::Document document;
    ExpectHr(S_OK, m_anchor.OwnerDocument(document));
    dom::Element root;
    ExpectHr(S_OK, document.DocumentElement(root));
    return root;
  }
  /// Keeps an element of the document, through which the root is reached.
  void Hold() { m_anchor = Country(9999); }

  RegistrySandbox m_registry;
  TempDir m_dir;
  CXmlChanParser m_parser;
  dom::Element m_anchor;
};

std::vector<std::string> Values(const dom::Element& parent, const char* path, const char* name) {
  std::vector<std::string> values;
  dom::ElementList matches;
  ExpectHr(S_OK, parent.Select(path, matches));
  for (LONG i = 0; i < matches.Count(); ++i) {
    dom::Element match;
    ExpectHr(S_OK, matches.Item(i, match));
    values.push_back(Attribute(match, name));
  }
  return values;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(XmlChanParser, WithoutADocument) {
  dom::Element element;
  ExpectHr(E_FAIL, m_parser.Load());
  ExpectHr(E_FAIL, m_parser.Save());
  ExpectHr(E_FAIL, m_parser.CreateNewDocument());
  ExpectHr(E_FAIL, m_parser.RemoveEmptyCountries());
  ExpectHr(E_FAIL, m_parser.FindOrCreateCountry(1, &element));
  ExpectHr(E_POINTER, m_parser.FindOrCreateCountry(1, nullptr));
  EXPECT_FALSE(element);
}

TEST_F(XmlChanParser, WithoutARoot) {
  ExpectHr(S_OK, m_parser.Open(m_dir.File("ChanInfo.xml")));
  dom::Element element;
  ExpectHr(E_FAIL, m_parser.FindOrCreateCountry(1, &element));
  ExpectHr(E_FAIL, m_parser.RemoveEmptyCountries());
}

TEST_F(XmlChanParser, NewCountryHasItsNameAndCode) {
  Open("<CHANNELTABLE/>");
  EXPECT_EQ("<Country name=\"United Kingdom\" countrycode=\"44\">\n</Country>\n",
            Formatted(Country(44)));
  EXPECT_EQ("<Country name=\"China ShenZhen Area\" countrycode=\"860755\">\n</Country>\n",
            Formatted(Country(860755)));
  EXPECT_FALSE(m_parser.IsDirty()) << "a country alone is no reason to write the file";
}

TEST_F(XmlChanParser, UnknownCountryHasAnEmptyName) {
  Open("<CHANNELTABLE/>");
  EXPECT_EQ("<Country name=\"\" countrycode=\"999\">\n</Country>\n", Formatted(Country(999)));
  EXPECT_EQ("-1", Attribute(Country(4294967295U), "countrycode"));
  EXPECT_EQ("-2147483648", Attribute(Country(2147483648U), "countrycode"));
}

TEST_F(XmlChanParser, CountryIsFoundByItsCodeAlone) {
  Open("<CHANNELTABLE><Country name='x' countrycode='44'/></CHANNELTABLE>");
  EXPECT_EQ("x", Attribute(Country(44), "name"));
  EXPECT_EQ("x", Attribute(Country(44), "name"));
  Hold();
  EXPECT_EQ(2, Count(Root(), "./Country"));
}

TEST_F(XmlChanParser, CodesCompareAsTexts) {
  Open("<CHANNELTABLE><Country name='x' countrycode='044'/></CHANNELTABLE>");
  EXPECT_EQ("United Kingdom", Attribute(Country(44), "name"));
  Hold();
  EXPECT_EQ((Texts{"044", "44", "9999"}), Values(Root(), "./Country", "countrycode"));
}

TEST_F(XmlChanParser, CountriesAreSorted) {
  Open("<CHANNELTABLE/>");
  Country(49);
  Country(44);
  Country(886);
  Country(4294967295U);
  Country(1);
  Hold();
  EXPECT_EQ((Texts{"-1", "1", "44", "49", "886", "9999"}),
            Values(Root(), "./Country", "countrycode"));
}

TEST_F(XmlChanParser, CountryAmongUnsortedSiblings) {
  Open(
      "<CHANNELTABLE><Country countrycode='49'/><!-- x --><Other countrycode='900'/>"
      "<Country countrycode='1'/><Country/></CHANNELTABLE>");
  Country(44);
  Country(50);
  Hold();
  EXPECT_EQ((Texts{"44", "49", "1", "<missing>", "50", "9999"}),
            Values(Root(), "./Country", "countrycode"));
}

TEST_F(XmlChanParser, AnotherRootIsTakenAsItIs) {
  Open("<OTHER><Country name='x' countrycode='44'/></OTHER>");
  EXPECT_EQ("x", Attribute(Country(44), "name"));
}

TEST_F(XmlChanParser, ChannelSetTypes) {
  const std::pair<InputSignalType, const char*> types[] = {
      {InputSignalAnalogAntenna, "Antenna"},
      {InputSignalAnalogCable, "Cable"},
      {InputSignalFMRadio, "FM-RADIO"},
      {InputSignalATSCAntenna, "ATSC-Antenna"},
      {InputSignalATSCCable, "ATSC-Cable"},
      {InputSignalDVBTerrestrial, "DVB-Terrestiral"},
      {InputSignalDVBSatellite, "DVB-Satellite"},
      {InputSignalTDMBMobile, "T-DMB"},
      {InputSignalISDBTerrestrialOneSeg, "ISDBT_OneSeg"},
      {InputSignalDVBCable, ""},
      {InputSignalDVBHandheld, ""},
      {InputSignalISDBCable, ""},
      {InputSignalISDBSatellite, ""},
      {InputSignalISDBTerrestrial, ""},
      {InputSignalUnknown, ""},
      {InputSignalAMRadio, ""},
      {static_cast<InputSignalType>(-7), ""},
  };
  Open("<CHANNELTABLE/>");
  const dom::Element country = Country(49);
  for (const auto& [type, text] : types) {
    EXPECT_EQ("<ChannelSet type=\"" + std::string(text) + "\" inputSignalType=\"" +
                  std::to_string(type) + "\">\n</ChannelSet>\n",
              Formatted(Set(country, type)));
  }
  EXPECT_EQ((Texts{"-7", "0", "1", "2", "5", "6", "16", "32", "48", "64", "80", "96", "112", "128",
                   "144", "160", "176"}),
            Values(country, "./ChannelSet", "inputSignalType"));
}

TEST_F(XmlChanParser, SatelliteStandsBeforeTerrestrial) {
  Open("<CHANNELTABLE/>");
  const dom::Element country = Country(49);
  Set(country, InputSignalDVBTerrestrial);
  Set(country, InputSignalDVBSatellite);
  EXPECT_EQ((Texts{"DVB-Satellite", "DVB-Terrestiral"}), Values(country, "./ChannelSet", "type"));
}

TEST_F(XmlChanParser, ChannelSetIsFoundByItsNumberAlone) {
  Open(
      "<CHANNELTABLE><Country countrycode='49'>"
      "<ChannelSet type='Antenna' inputSignalType='64' id='a'/>"
      "<ChannelSet type='DVB-Satellite' inputSignalType='1' id='b'/></Country></CHANNELTABLE>");
  const dom::Element country = Country(49);
  dom::Element set;
  ExpectHr(S_OK, CXmlChanParser::FindChannelSet(country, InputSignalDVBSatellite, &set, false));
  EXPECT_EQ("a", Attribute(set, "id"));
  EXPECT_EQ("Antenna", Attribute(set, "type")) << "the text is never read, nor mended";
}

TEST_F(XmlChanParser, MissingChannelSet) {
  Open("<CHANNELTABLE/>");
  const dom::Element country = Country(49);
  dom::Element set = country;
  ExpectHr(E_FAIL, CXmlChanParser::FindChannelSet(country, InputSignalFMRadio, &set, false));
  EXPECT_FALSE(set);
  EXPECT_FALSE(country.HasChildNodes());
}

TEST_F(XmlChanParser, ChannelSetNulls) {
  Open("<CHANNELTABLE/>");
  const dom::Element country = Country(49);
  dom::Element set;
  ExpectHr(E_POINTER,
           CXmlChanParser::FindChannelSet(dom::Element(), InputSignalFMRadio, &set, true));
  ExpectHr(E_FAIL, CXmlChanParser::FindChannelSet(country, InputSignalFMRadio, nullptr, true));
  EXPECT_FALSE(country.HasChildNodes());
}

TEST_F(XmlChanParser, ChannelSetAmongUnsortedSiblings) {
  Open(
      "<CHANNELTABLE><Country countrycode='49'><ChannelSet inputSignalType='80'/>"
      "<ChannelSet/><ChannelSet inputSignalType='64'/></Country></CHANNELTABLE>");
  const dom::Element country = Country(49);
  Set(country, InputSignalATSCCable);
  Set(country, InputSignalDVBHandheld);
  EXPECT_EQ((Texts{"32", "80", "<missing>", "64", "96"}),
            Values(country, "./ChannelSet", "inputSignalType"));
}

TEST_F(XmlChanParser, CountsAndGetsChannels) {
  const TextDocument document(
      "<ChannelSet><Channel index='7'/><!-- x --><Other/><Channel index='3'><Channel index='9'/>"
      "</Channel></ChannelSet>");
  LONG count = -1;
  ExpectHr(S_OK, CXmlChanParser::CountChannels(document.root, &count));
  EXPECT_EQ(2, count);
  dom::Element channel;
  ExpectHr(S_OK, CXmlChanParser::GetChannelElement(document.root, 0, &channel));
  EXPECT_EQ("7", Attribute(channel, "index"));
  ExpectHr(S_OK, CXmlChanParser::GetChannelElement(document.root, 1, &channel));
  EXPECT_EQ("3", Attribute(channel, "index"));
  ExpectHr(E_FAIL, CXmlChanParser::GetChannelElement(document.root, 2, &channel));
  ExpectHr(E_FAIL, CXmlChanParser::GetChannelElement(document.root, 2147483647, &channel));
  ExpectHr(E_POINTER, CXmlChanParser::GetChannelElement(document.root, -1, &channel));
  ExpectHr(E_POINTER, CXmlChanParser::GetChannelElement(document.root, 0, nullptr));
  ExpectHr(E_POINTER, CXmlChanParser::GetChannelElement(dom::Element(), 0, &channel));
  ExpectHr(E_POINTER, CXmlChanParser::CountChannels(document.root, nullptr));
  ExpectHr(E_POINTER, CXmlChanParser::CountChannels(dom::Element(), &count));
}

TEST_F(XmlChanParser, NoChannels) {
  const TextDocument document("<ChannelSet/>");
  LONG count = -1;
  ExpectHr(S_OK, CXmlChanParser::CountChannels(document.root, &count));
  EXPECT_EQ(0, count);
  dom::Element channel;
  ExpectHr(E_FAIL, CXmlChanParser::GetChannelElement(document.root, 0, &channel));
}

TEST_F(XmlChanParser, NewChannelLandsBetweenItsNeighbours) {
  const TextDocument document(
      "<ChannelSet><Channel index='1'/><Channel index='3'/><Channel index='9'/></ChannelSet>");
  FakeChannel record;
  record.index = 5;
  dom::Element channel;
  ExpectHr(S_OK, CXmlChanParser::FindOrCreateChannelElement(document.root, &record, &channel));
  EXPECT_EQ("<Channel/>\n", Formatted(channel)) << "the codec writes the attributes";
  ExpectHr(S_OK, channel.SetInt("index", 5));
  EXPECT_EQ((Texts{"1", "3", "5", "9"}), Values(document.root, "./Channel", "index"));
}

TEST_F(XmlChanParser, ChannelElementNulls) {
  const TextDocument document("<ChannelSet/>");
  FakeChannel record;
  dom::Element channel;
  ExpectHr(E_POINTER,
           CXmlChanParser::FindOrCreateChannelElement(dom::Element(), &record, &channel));
  ExpectHr(E_POINTER, CXmlChanParser::FindOrCreateChannelElement(document.root, nullptr, &channel));
  ExpectHr(E_POINTER, CXmlChanParser::FindOrCreateChannelElement(document.root, &record, nullptr));
  record.failing = FakeChannel::Getter::Index;
  ExpectHr(FakeChannel::kFailure,
           CXmlChanParser::FindOrCreateChannelElement(document.root, &record, &channel));
  EXPECT_FALSE(document.root.HasChildNodes());
}

TEST_F(XmlChanParser, RemovesAllChannels) {
  const TextDocument document(
      "<ChannelSet><Channel index='1'/><Other/><Channel><Channel/></Channel></ChannelSet>");
  ExpectHr(S_OK, CXmlChanParser::RemoveAllChannels(document.root));
  EXPECT_EQ("<ChannelSet>\n\t<Other/>\n</ChannelSet>\n", Formatted(document.root));
  ExpectHr(S_OK, CXmlChanParser::RemoveAllChannels(document.root));
  ExpectHr(E_POINTER, CXmlChanParser::RemoveAllChannels(dom::Element()));
}

TEST_F(XmlChanParser, RemovesCountriesWithoutChannelSets) {
  Open(
      "<CHANNELTABLE><Country countrycode='1'/><Other/>"
      "<Country countrycode='2'><ChannelSet/></Country>"
      "<Country countrycode='3'><!-- x --><Other/></Country>"
      "<Country countrycode='4'><Other><ChannelSet/></Other></Country></CHANNELTABLE>");
  Hold();
  const dom::Element root = Root();
  ExpectHr(S_OK, m_parser.RemoveEmptyCountries());
  EXPECT_EQ((Texts{"2"}), Values(root, "./Country", "countrycode"));
  EXPECT_EQ(1, Count(root, "./Other"));
  ExpectHr(S_OK, m_parser.RemoveEmptyCountries());
}

#include "xml/codecs/satellite_elements.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/com_ptr.h"
#include "platform/text.h"
#include "satellite/lnb_info.h"
#include "satellite/satellite_info.h"
#include "satellite/transponder_info.h"
#include "support/dom_text.h"
#include "support/expect.h"

namespace {

using xml::Direction;

template <typename C, typename I>
ComPtr<I> Make() {
  ComPtr<I> record;
  ExpectHr(S_OK, C::CreateInstance(record.Receive()));
  return record;
}
ComPtr<ISatelliteInfo> MakeSatellite() { return Make<CSatelliteInfo, ISatelliteInfo>(); }
ComPtr<ITransponderInfo> MakeTransponder() { return Make<CTransponderInfo, ITransponderInfo>(); }
ComPtr<ILNBInfo> MakeLnb() { return Make<CLNBInfo, ILNBInfo>(); }

template <typename I>
std::string Text(const ComPtr<I>& record, HRESULT (STDMETHODCALLTYPE I::*getter)(BSTR*)) {
  Bstr text;
  ExpectHr(S_OK, (record.Get()->*getter)(text.Receive()));
  return text.Get() != nullptr ? text::ToUtf8(text.View()) : "<null>";
}
template <typename I, typename T>
T Value(const ComPtr<I>& record, HRESULT (STDMETHODCALLTYPE I::*getter)(T*)) {
  T value{};
  ExpectHr(S_OK, (record.Get()->*getter)(&value));
  return value;
}

/// Everything that is read of a satellite.
std::string Describe(const ComPtr<ISatelliteInfo>& record) {
  BOOL west = 0;
  LONG longitude = 0;
  ExpectHr(S_OK, record->GetOrbitalPosition(&west, &longitude));
  using I = ISatelliteInfo;
  return std::to_string(west) + "|" + std::to_string(longitude) + "|" + Text(record, &I::GetName) +
         "|" + Text(record, &I::GetID) + "|" + std::to_string(Value(record, &I::GetRegion)) + "|" +
         std::to_string(Value(record, &I::GetDivision)) + "|" +
         std::to_string(Value(record, &I::GetAzimuth)) + "|" +
         std::to_string(Value(record, &I::GetElevation)) + "|" +
         std::to_string(Value(record, &I::GetIndex));
}
std::string Describe(const ComPtr<ITransponderInfo>& record) {
  using I = ITransponderInfo;
  return Text(record, &I::GetName) + "|" + std::to_string(Value(record, &I::GetCarrierFrequency)) +
         "|" + std::to_string(Value(record, &I::GetPolarisation)) + "|" +
         std::to_string(Value(record, &I::GetSymbolRate)) + "|" +
         std::to_string(Value(record, &I::GetInnerFECRate)) + "|" +
         std::to_string(Value(record, &I::GetModulationType)) + "|" +
         std::to_string(Value(record, &I::GetSpectralInversion));
}
std::string Describe(const ComPtr<ILNBInfo>& record) {
  using I = ILNBInfo;
  return Text(record, &I::GetType) + "|" + std::to_string(Value(record, &I::GetLowFreq)) + "|" +
         std::to_string(Value(record, &I::GetHighFreq)) + "|" +
         std::to_string(Value(record, &I::GetSwitchFreq));
}

std::string ReadSatellite(const std::string& attributes) {
  const TextDocument document("<Satellite " + attributes + "/>");
  const ComPtr<ISatelliteInfo> record = MakeSatellite();
  // Reading says east, whatever was there.
  record->SetOrbitalPosition(1, 1);
  ExpectHr(S_OK, xml::SatelliteElementIO(document.root, record.Get(), Direction::Read));
  EXPECT_EQ(0, Value(record, &ISatelliteInfo::GetDirty));
  return Describe(record);
}
std::string ReadTransponder(const std::string& attributes) {
  const TextDocument document("<Transponder " + attributes + "/>");
  const ComPtr<ITransponderInfo> record = MakeTransponder();
  ExpectHr(S_OK, xml::TransponderElementIO(document.root, record.Get(), Direction::Read));
  EXPECT_EQ(0U, Value(record, &ITransponderInfo::GetIndex)) << "there is no index in the file";
  return Describe(record);
}
std::string ReadLnb(const std::string& attributes) {
  const TextDocument document("<LNB " + attributes + "/>");
  const ComPtr<ILNBInfo> record = MakeLnb();
  ExpectHr(S_OK, xml::LNBElementIO(document.root, record.Get(), Direction::Read));
  return Describe(record);
}

/// Fails at one of the getters, and sees that they are asked in their order.
class FailingSatellite : public CSatelliteInfo {
 public:
  int failing = -1;
  int asked = 0;
  HRESULT STDMETHODCALLTYPE GetIndex(UINT* p) override { return Step(0, p); }
  HRESULT STDMETHODCALLTYPE GetOrbitalPosition(BOOL* west, LONG* p) override {
    return Step(1, west) == S_OK ? CSatelliteInfo::GetOrbitalPosition(west, p) : kFailure;
  }
  HRESULT STDMETHODCALLTYPE GetAzimuth(LONG* p) override { return Step(2, p); }
  HRESULT STDMETHODCALLTYPE GetElevation(LONG* p) override { return Step(3, p); }
  HRESULT STDMETHODCALLTYPE GetName(BSTR* p) override { return Step(4, p); }
  HRESULT STDMETHODCALLTYPE GetID(BSTR* p) override { return Step(5, p); }
  HRESULT STDMETHODCALLTYPE GetRegion(ESatRegion* p) override { return Step(6, p); }
  HRESULT STDMETHODCALLTYPE GetDivision(ESatDivision* p) override { return Step(7, p); }
  static constexpr HRESULT kFailure = static_cast<HRESULT>(0x8004BEEFU);

 private:
  template <typename T>
  HRESULT Step(int number, T* out) {
    EXPECT_EQ(asked++, number);
    if (number == failing) return kFailure;
    *out = T{};
    return S_OK;
  }
};

/// The attributes without one of them.
std::string Without(const std::vector<std::string>& attributes, std::size_t left) {
  std::string text;
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    if (i != left) text += attributes[i] + " ";
  }
  return text;
}

}  // namespace

TEST(SatelliteElements, Satellite) {
  EXPECT_EQ("0|-30|Hot Bird|S13|2|3|180|35|7",
            ReadSatellite("pos='-30' name='Hot Bird' id='S13' region='Europe' division='3' "
                          "azimuthe='180' elevation='35' index='7'"));
  // The order in the file does not matter, and neither does the right spelling of a word.
  EXPECT_EQ("0|1|n|i|1|9|0|4|2",
            ReadSatellite("index='2' elevation='4' azimuth='3' division='9' region='Asia' id='i' "
                          "name='n' pos='1'"));
}

// A missing text takes the one before it, a missing number is 0.
TEST(SatelliteElements, SatelliteWithoutOneAttribute) {
  // The region's word is a division's too, and the other way round, nowhere; so each text is one
  // that the next attribute can make something of.
  const std::vector<std::string> attributes = {"pos='5'",         "name='n'",     "id='Asia'",
                                               "region='Europe'", "division='4'", "azimuthe='6'",
                                               "elevation='7'",   "index='8'"};
  EXPECT_EQ("0|5|n|Asia|2|4|6|7|8", ReadSatellite(Without(attributes, 99)));
  const char* const expected[] = {"0|0|n|Asia|2|4|6|7|8", "0|5||Asia|2|4|6|7|8",
                                  "0|5|n|n|2|4|6|7|8",    "0|5|n|Asia|1|4|6|7|8",
                                  "0|5|n|Asia|2|0|6|7|8", "0|5|n|Asia|2|4|0|7|8",
                                  "0|5|n|Asia|2|4|6|0|8", "0|5|n|Asia|2|4|6|7|0"};
  for (std::size_t left = 0; left < attributes.size(); ++left) {
    EXPECT_EQ(expected[left], ReadSatellite(Without(attributes, left))) << attributes[left];
  }
}

TEST(SatelliteElements, SatelliteTextsCarryFarther) {
  EXPECT_EQ("0|0|Asia|Asia|1|0|0|0|0", ReadSatellite("name='Asia'"));
  EXPECT_EQ("0|0|7|7|0|7|0|0|0", ReadSatellite("name='7'"));
  EXPECT_EQ("0|0||7|0|7|0|0|0", ReadSatellite("id='7'"));
  EXPECT_EQ("0|0|||0|7|0|0|0", ReadSatellite("region='7'"));
  EXPECT_EQ("0|0|7||0|0|0|0|0", ReadSatellite("name='7' id=''")) << "an empty text is a text";
  EXPECT_EQ("0|0|||0|0|0|0|0", ReadSatellite("")) << "empty texts, not null ones";
}

TEST(SatelliteElements, UnknownRegionsAndDivisions) {
  for (const char* word : {"Unknown", "asia", "Asia ", "", "10", "0"}) {
    EXPECT_EQ("0|0|||0|0|0|0|0",
              ReadSatellite(std::string("region='") + word + "' division='" + word + "'"))
        << word;
  }
}

TEST(SatelliteElements, NumbersWrapAtThirtyTwoBits) {
  EXPECT_EQ("0|5|||0|0|-2147483648|-1|4294967295",
            ReadSatellite("pos='4294967301' azimuthe='2147483648' elevation='4294967295' "
                          "index='4294967295'"));
  EXPECT_EQ("0|12|||0|0|0|-3|0",
            ReadSatellite("pos=' +12x' azimuthe='x1' elevation='-3.9' index=''"));
  EXPECT_EQ("|4294967295|-1|-1|-1|-1|-1",
            ReadTransponder("freq='4294967295' symbolRate='4294967295'"));
  EXPECT_EQ("|2147483648|4294967295|4294967294",
            ReadLnb("lowFreq='2147483648' highFreq='-1' switchFreq='4294967294'"));
}

TEST(SatelliteElements, TextsAreCutTo259Bytes) {
  const std::string fits(259, 'n');
  const std::string longer = fits + "m";
  EXPECT_EQ("0|0|" + fits + "|i|0|0|0|0|0", ReadSatellite("name='" + fits + "' id='i'"));
  EXPECT_EQ("0|0|" + fits + "|i|0|0|0|0|0", ReadSatellite("name='" + longer + "' id='i'"));
  EXPECT_EQ("0|0|" + fits + "|" + fits + "|0|0|0|0|0",
            ReadSatellite("name='" + std::string(5000, 'n') + "'"));
  EXPECT_EQ(fits + "|0|0|0", ReadLnb("type='" + longer + "'"));
  EXPECT_EQ(fits + "|0|-1|0|-1|-1|-1", ReadTransponder("name='" + longer + "'"));
}

TEST(SatelliteElements, Transponder) {
  EXPECT_EQ("11.954 H|11954|1|27500|3|20|1",
            ReadTransponder("name='11.954 H' freq='11954' polarisation='LinearH' "
                            "symbolRate='27500' innerFECRate='3/4' modulation='QPSK' "
                            "spectralInversion='automatic'"));
}

TEST(SatelliteElements, TransponderWithoutOneAttribute) {
  // "-1" is a word for all but the polarisation; "NotSet" is one for all.
  const std::vector<std::string> attributes = {
      "name='CircularR'",   "freq='5'",          "polarisation='LinearV'",      "symbolRate='6'",
      "innerFECRate='7/8'", "modulation='BPSK'", "spectralInversion='inverted'"};
  EXPECT_EQ("CircularR|5|2|6|8|21|3", ReadTransponder(Without(attributes, 99)));
  const char* const expected[] = {"|5|2|6|8|21|3",           "CircularR|0|2|6|8|21|3",
                                  "CircularR|5|4|6|8|21|3",  "CircularR|5|2|0|8|21|3",
                                  "CircularR|5|2|6|-1|21|3", "CircularR|5|2|6|8|-1|3",
                                  "CircularR|5|2|6|8|21|-1"};
  for (std::size_t left = 0; left < attributes.size(); ++left) {
    EXPECT_EQ(expected[left], ReadTransponder(Without(attributes, left))) << attributes[left];
  }
  EXPECT_EQ("|0|-1|0|-1|-1|-1", ReadTransponder(""));
  // Texts that the attribute behind a missing one can make something of.
  EXPECT_EQ("3/4|0|-1|0|3|-1|-1", ReadTransponder("name='3/4'"));
  EXPECT_EQ("|0|-1|0|5|-1|-1", ReadTransponder("polarisation='4/5'"));
  EXPECT_EQ("|0|-1|0|-1|20|-1", ReadTransponder("innerFECRate='QPSK'"));
  EXPECT_EQ("|0|-1|0|-1|-1|2", ReadTransponder("modulation='normal'"));
  EXPECT_EQ("normal|0|-1|0|-1|-1|2", ReadTransponder("name='normal'"));
}

TEST(SatelliteElements, UnknownTransponderWords) {
  for (const char* word :
       {"linearh", "3/4 ", "qpsk", "Automatic", "", "8PSK", "8/9", "6/7", "-1"}) {
    const std::string w = word;
    EXPECT_EQ("n|0|-1|0|-1|-1|-1",
              ReadTransponder("name='n' polarisation='" + w + "' innerFECRate='" + w +
                              "' modulation='" + w + "' spectralInversion='" + w + "'"))
        << word;
  }
  EXPECT_EQ("|0|4|0|-1|26|-1", ReadTransponder("polarisation='Circularr' innerFECRate='6/7' "
                                               "modulation='BDA_MOD_ANALOG_FREQUENCY'"));
}

TEST(SatelliteElements, Lnb) {
  EXPECT_EQ("Universal|9750|10600|11700",
            ReadLnb("type='Universal' lowFreq='9750' highFreq='10600' switchFreq='11700'"));
  EXPECT_EQ("|9750|10600|11700", ReadLnb("lowFreq='9750' highFreq='10600' switchFreq='11700'"));
  EXPECT_EQ("U|0|2|3", ReadLnb("type='U' highFreq='2' switchFreq='3'"));
  EXPECT_EQ("U|1|0|3", ReadLnb("type='U' lowFreq='1' switchFreq='3'"));
  EXPECT_EQ("U|1|2|0", ReadLnb("type='U' lowFreq='1' highFreq='2'"));
  EXPECT_EQ("|0|0|0", ReadLnb("")) << "an empty type, not a null one";
}

TEST(SatelliteElements, TransponderAndLnbAreNeverWritten) {
  const TextDocument document("<E name='old'/>");
  const auto transponder = MakeTransponder();
  transponder->SetName(Wide("new").Get());
  const auto lnb = MakeLnb();
  ExpectHr(E_NOTIMPL,
           xml::TransponderElementIO(document.root, transponder.Get(), Direction::Write));
  ExpectHr(E_NOTIMPL, xml::LNBElementIO(document.root, lnb.Get(), Direction::Write));
  EXPECT_EQ("<E name=\"old\"/>\n", Formatted(document.root));
  EXPECT_EQ("new|0|-1|0|-1|-1|-1", Describe(transponder));
  EXPECT_EQ("<null>|0|0|0", Describe(lnb));
}

TEST(SatelliteElements, WritesASatellite) {
  const TextDocument document("<Satellite/>");
  const auto record = MakeSatellite();
  record->SetOrbitalPosition(1, -130);
  record->SetName(Wide("n'\"&<").Get());
  record->SetID(Wide("i").Get());
  record->SetRegion(RegionAtlantic);
  record->SetDivision(SatcoDX_9);
  record->SetAzimuth(11);
  record->SetElevation(-12);
  record->SetIndex(0xFFFFFFFF);
  record->SetDirty(1);
  ExpectHr(S_OK, xml::SatelliteElementIO(document.root, record.Get(), Direction::Write));
  EXPECT_EQ(
      "<Satellite pos=\"-130\" name=\"n'\"&<\" id=\"i\" region=\"Atlantic\" division=\"9\" "
      "azimuthe=\"11\" elevation=\"-12\" index=\"-1\"/>\n",
      Formatted(document.root));
  EXPECT_EQ(1, Value(record, &ISatelliteInfo::GetDirty));
  // And back; the side is lost.
  const auto other = MakeSatellite();
  ExpectHr(S_OK, xml::SatelliteElementIO(document.root, other.Get(), Direction::Read));
  EXPECT_EQ("0|-130|n'\"&<|i|3|9|11|-12|4294967295", Describe(other));
}

TEST(SatelliteElements, WritesAFreshSatellite) {
  const TextDocument document("<Satellite name='old' other='stays'/>");
  ExpectHr(S_OK, xml::SatelliteElementIO(document.root, MakeSatellite().Get(), Direction::Write));
  EXPECT_EQ("", Attribute(document.root, "name")) << "an unset text is written empty";
  EXPECT_EQ("", Attribute(document.root, "id"));
  EXPECT_EQ("Unknown", Attribute(document.root, "region"));
  EXPECT_EQ("Unknown", Attribute(document.root, "division"));
  EXPECT_EQ("-1", Attribute(document.root, "azimuthe"));
  EXPECT_EQ("0", Attribute(document.root, "index"));
  EXPECT_EQ("stays", Attribute(document.root, "other"));
}

// Getters are asked in a fixed order; the first that fails ends it, and nothing is written.
TEST(SatelliteElements, WritingStopsAtTheFirstFailure) {
  for (int failing = 0; failing < 8; ++failing) {
    const TextDocument document("<Satellite/>");
    auto* raw = new FailingSatellite;
    const auto record = ComPtr<ISatelliteInfo>::Attach(raw);
    raw->failing = failing;
    ExpectHr(FailingSatellite::kFailure,
             xml::SatelliteElementIO(document.root, record.Get(), Direction::Write));
    EXPECT_EQ(failing + 1, raw->asked);
    EXPECT_EQ("<Satellite/>\n", Formatted(document.root));
  }
}

TEST(SatelliteElements, NullPointers) {
  const TextDocument document("<E/>");
  for (const Direction direction : {Direction::Read, Direction::Write}) {
    ExpectHr(E_POINTER, xml::SatelliteElementIO(document.root, nullptr, direction));
    ExpectHr(E_POINTER, xml::TransponderElementIO(document.root, nullptr, direction));
    ExpectHr(E_POINTER, xml::LNBElementIO(document.root, nullptr, direction));
    ExpectHr(E_POINTER, xml::SatelliteElementIO({}, MakeSatellite().Get(), direction));
    ExpectHr(E_POINTER, xml::TransponderElementIO({}, MakeTransponder().Get(), direction));
    ExpectHr(E_POINTER, xml::LNBElementIO({}, MakeLnb().Get(), direction));
  }
}

// The result is that of the last setter, whatever the others answered.
TEST(SatelliteElements, ReadingAnswersTheLastSetter) {
  class Refusing : public CLNBInfo {
   public:
    HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD) override { return E_ACCESSDENIED; }
  };
  class RefusingLast : public CLNBInfo {
   public:
    HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD) override { return E_ACCESSDENIED; }
  };
  const TextDocument document("<LNB lowFreq='1' highFreq='2'/>");
  const auto refusing = ComPtr<ILNBInfo>::Attach(new Refusing);
  ExpectHr(S_OK, xml::LNBElementIO(document.root, refusing.Get(), Direction::Read));
  EXPECT_EQ("|0|2|0", Describe(refusing));
  const auto last = ComPtr<ILNBInfo>::Attach(new RefusingLast);
  ExpectHr(E_ACCESSDENIED, xml::LNBElementIO(document.root, last.Get(), Direction::Read));
}

#include "xml/codecs/dish_sat_element.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/com_ptr.h"
#include "platform/text.h"
#include "satellite/dish_sat_info.h"
#include "support/dom_text.h"
#include "support/expect.h"

namespace {

using xml::Direction;

ComPtr<IDishSatInfo> Make() {
  ComPtr<IDishSatInfo> record;
  ExpectHr(S_OK, CDishSatInfo::CreateInstance(record.Receive()));
  return record;
}

std::string Describe(const ComPtr<IDishSatInfo>& record) {
  Bstr id;
  Bstr band;
  DWORD low = 0;
  DWORD high = 0;
  DWORD switchFreq = 0;
  ExpectHr(S_OK, record->GetID(id.Receive()));
  ExpectHr(S_OK, record->GetBand(band.Receive()));
  ExpectHr(S_OK, record->GetLowFreq(&low));
  ExpectHr(S_OK, record->GetHighFreq(&high));
  ExpectHr(S_OK, record->GetSwitchFreq(&switchFreq));
  EXPECT_TRUE(id.Get() != nullptr && band.Get() != nullptr);
  return text::ToUtf8(id.View()) + "|" + text::ToUtf8(band.View()) + "|" + std::to_string(low) +
         "|" + std::to_string(high) + "|" + std::to_string(switchFreq);
}

std::string Read(const std::string& attributes) {
  const TextDocument document("<SAT " + attributes + "/>");
  const ComPtr<IDishSatInfo> record = Make();
  ExpectHr(S_OK, xml::DishSatElementIO(document.root, record.Get(), Direction::Read));
  UINT index = 77;
  LONG dirty = 77;
  ExpectHr(S_OK, record->GetIndex(&index));
  ExpectHr(S_OK, record->GetDirty(&dirty));
  EXPECT_EQ(0U, index);
  EXPECT_EQ(0, dirty);
  return Describe(record);
}

/// Fails at one of its getters or setters.
class Failing : public CDishSatInfo {
 public:
  static constexpr HRESULT kFailure = static_cast<HRESULT>(0x8004BEEFU);
  int failing = -1;
  int asked = 0;
  HRESULT STDMETHODCALLTYPE GetID(BSTR* p) override { return Step(0, p); }
  HRESULT STDMETHODCALLTYPE GetBand(BSTR* p) override { return Step(1, p); }
  HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD* p) override { return Step(2, p); }
  HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD* p) override { return Step(3, p); }
  HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD* p) override { return Step(4, p); }
  HRESULT STDMETHODCALLTYPE SetID(BSTR) override { return kFailure; }
  HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD) override { return E_ACCESSDENIED; }

 private:
  template <typename T>
  HRESULT Step(int number, T* out) {
    EXPECT_EQ(asked++, number);
    if (number == failing) return kFailure;
    *out = T{};
    return S_OK;
  }
};

}  // namespace

TEST(DishSatElement, Reads) {
  EXPECT_EQ("S13|Ku|9750|10600|11700",
            Read("id='S13' band='Ku' LNB_Low='9750' LNB_High='10600' LNB_Switch='11700'"));
  EXPECT_EQ("4294967295|x|4294967295|2147483648|4",
            Read("LNB_Switch='4294967300' LNB_High='2147483648' LNB_Low='-1' band='x' "
                 "id='4294967295'"));
}

TEST(DishSatElement, MissingAttributes) {
  EXPECT_EQ("|Ku|1|2|3", Read("band='Ku' LNB_Low='1' LNB_High='2' LNB_Switch='3'"));
  EXPECT_EQ("S13|S13|1|2|3", Read("id='S13' LNB_Low='1' LNB_High='2' LNB_Switch='3'"))
      << "a missing band takes the id";
  EXPECT_EQ("a|b|0|2|3", Read("id='a' band='b' LNB_High='2' LNB_Switch='3'"));
  EXPECT_EQ("a|b|1|0|3", Read("id='a' band='b' LNB_Low='1' LNB_Switch='3'"));
  EXPECT_EQ("a|b|1|2|0", Read("id='a' band='b' LNB_Low='1' LNB_High='2'"));
  EXPECT_EQ("a||0|0|0", Read("id='a' band=''"));
  EXPECT_EQ("||0|0|0", Read(""));
}

TEST(DishSatElement, TextsAreCutTo259Bytes) {
  const std::string fits(259, 'i');
  EXPECT_EQ(fits + "|b|0|0|0", Read("id='" + fits + "x' band='b'"));
  EXPECT_EQ(fits + "|" + fits + "|0|0|0", Read("id='" + std::string(4000, 'i') + "'"));
  EXPECT_EQ("a|" + fits + "|0|0|0", Read("id='a' band='" + fits + "y'"));
}

TEST(DishSatElement, Writes) {
  const TextDocument document("<SAT other='stays' LNB_High='old'/>");
  const auto record = Make();
  record->SetID(Wide("i'\"&<>").Get());
  record->SetBand(Wide("C").Get());
  record->SetLowFreq(0xFFFFFFFF);
  record->SetHighFreq(0x80000000);
  record->SetSwitchFreq(11700);
  record->SetDirty(1);
  ExpectHr(S_OK, xml::DishSatElementIO(document.root, record.Get(), Direction::Write));
  EXPECT_EQ(
      "<SAT other=\"stays\" LNB_High=\"-2147483648\" id=\"i'\"&<>\" band=\"C\" LNB_Low=\"-1\" "
      "LNB_Switch=\"11700\"/>\n",
      Formatted(document.root));
  LONG dirty = 0;
  ExpectHr(S_OK, record->GetDirty(&dirty));
  EXPECT_EQ(1, dirty) << "that is the list's";
  const auto other = Make();
  ExpectHr(S_OK, xml::DishSatElementIO(document.root, other.Get(), Direction::Read));
  EXPECT_EQ("i'\"&<>|C|4294967295|2147483648|11700", Describe(other));
}

TEST(DishSatElement, UnsetTextsAreWrittenEmpty) {
  const TextDocument document("<SAT id='old'/>");
  ExpectHr(S_OK, xml::DishSatElementIO(document.root, Make().Get(), Direction::Write));
  EXPECT_EQ("<SAT id=\"\" band=\"\" LNB_Low=\"0\" LNB_High=\"0\" LNB_Switch=\"0\"/>\n",
            Formatted(document.root));
}

TEST(DishSatElement, WritingStopsAtTheFirstFailure) {
  for (int failing = 0; failing < 5; ++failing) {
    const TextDocument document("<SAT/>");
    auto* raw = new Failing;
    const auto record = ComPtr<IDishSatInfo>::Attach(raw);
    raw->failing = failing;
    ExpectHr(Failing::kFailure, xml::DishSatElementIO(document.root, raw, Direction::Write));
    EXPECT_EQ(failing + 1, raw->asked);
    EXPECT_EQ("<SAT/>\n", Formatted(document.root));
  }
}

TEST(DishSatElement, ReadingAnswersTheLastSetter) {
  const TextDocument document("<SAT/>");
  const auto record = ComPtr<IDishSatInfo>::Attach(new Failing);
  ExpectHr(E_ACCESSDENIED, xml::DishSatElementIO(document.root, record.Get(), Direction::Read));
}

TEST(DishSatElement, NullPointers) {
  const TextDocument document("<SAT/>");
  for (const Direction direction : {Direction::Read, Direction::Write}) {
    ExpectHr(E_POINTER, xml::DishSatElementIO(document.root, nullptr, direction));
    ExpectHr(E_POINTER, xml::DishSatElementIO({}, Make().Get(), direction));
  }
}

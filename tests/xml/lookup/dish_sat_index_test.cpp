#include "xml/lookup/dish_sat_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "platform/com_ptr.h"
#include "platform/text.h"
#include "satellite/dish_sat_info.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "support/random.h"
#include "xml/codecs/dish_sat_element.h"
#include "xml/elements/xml_nodes.h"

namespace {

struct Assignment {
  std::string id;
  std::string band;
  std::int32_t low = 0;
  std::int32_t high = 0;
  std::int32_t switchFreq = 0;
};

ComPtr<IDishSatInfo> Make(const Assignment& values) {
  ComPtr<IDishSatInfo> record;
  ExpectHr(S_OK, CDishSatInfo::CreateInstance(record.Receive()));
  record->SetID(text::FromNarrow(values.id).Get());
  record->SetBand(text::FromNarrow(values.band).Get());
  record->SetLowFreq(static_cast<DWORD>(values.low));
  record->SetHighFreq(static_cast<DWORD>(values.high));
  record->SetSwitchFreq(static_cast<DWORD>(values.switchFreq));
  return record;
}

/// The selection that the index stands for; empty where it does not fit its buffer.
std::string PathOf(const Assignment& values) {
  char path[260];
  const int length = std::snprintf(
      path, sizeof(path),
      "./SAT[@id='%s'][@band='%s'][@LNB_Low='%d'][@LNB_High='%d'][@LNB_Switch='%d']",
      values.id.c_str(), values.band.c_str(), values.low, values.high, values.switchFreq);
  return length < static_cast<int>(sizeof(path)) ? path : "";
}

/// One selection for each assignment, else a new element at the end.
dom::Element Literal(const dom::Element& dish, const Assignment& values) {
  dom::Element sat;
  const std::string path = PathOf(values);
  if (!path.empty() && dish.SelectSingle(path.c_str(), sat) == S_OK) return sat;
  ExpectHr(S_OK, xml::CreateElementFor(dish, "SAT", sat));
  ExpectHr(S_OK, dish.AppendChild(sat));
  return sat;
}

/// A dish, twice: one for the index and one for the selections. Elements carry a mark to be known
/// by, and are written as the codec writes them.
class DishTwins {
 public:
  explicit DishTwins(const std::string& xml)
      : m_indexed(xml), m_literal(xml), m_index(m_indexed.root) {}

  void Save(const Assignment& values, int mark) {
    const ComPtr<IDishSatInfo> record = Make(values);
    dom::Element sat;
    ExpectHr(S_OK, m_index.FindOrCreate(record.Get(), sat));
    ASSERT_TRUE(sat);
    const dom::Element expected = Literal(m_literal.root, values);
    ASSERT_EQ(Attribute(expected, "mark"), Attribute(sat, "mark"));
    for (const dom::Element& element : {sat, expected}) {
      xml::DishSatElementIO(element, record.Get(), xml::Direction::Write);
      ExpectHr(S_OK, element.SetInt("mark", mark));
    }
  }
  void ExpectSame() { EXPECT_EQ(Formatted(m_literal.root), Formatted(m_indexed.root)); }
  LONG Count() { return ::Count(m_indexed.root, "./SAT"); }
  const dom::Element& Root() { return m_indexed.root; }
  xml::DishSatIndex& Index() { return m_index; }

 private:
  TextDocument m_indexed;
  TextDocument m_literal;
  xml::DishSatIndex m_index;
};

std::string Sat(const Assignment& values, const std::string& more = "") {
  return "<SAT id='" + values.id + "' band='" + values.band + "' LNB_Low='" +
         std::to_string(values.low) + "' LNB_High='" + std::to_string(values.high) +
         "' LNB_Switch='" + std::to_string(values.switchFreq) + "' " + more + "/>";
}

/// A path of this many bytes, by the id's length.
Assignment OfPathLength(std::size_t length) {
  Assignment values = {"", "Ku", 1, 2, 3};
  values.id = std::string(length - PathOf(values).size(), 'i');
  return values;
}

}  // namespace

TEST(DishSatIndex, FindsTheFirstOfDoubles) {
  const Assignment a = {"a", "Ku", 1, 2, 3};
  DishTwins twins("<D>" + Sat({"b", "Ku", 1, 2, 3}) + Sat(a, "mark='1'") + Sat(a, "mark='2'") +
                  "</D>");
  twins.Save(a, 10);
  twins.Save(a, 11);
  EXPECT_EQ(3, twins.Count());
  twins.ExpectSame();
}

TEST(DishSatIndex, EveryValueCounts) {
  const Assignment base = {"a", "Ku", 1, 2, 3};
  DishTwins twins("<D>" + Sat(base) + "</D>");
  int mark = 0;
  for (const Assignment& other :
       {Assignment{"A", "Ku", 1, 2, 3}, Assignment{"a", "ku", 1, 2, 3},
        Assignment{"a", "Ku", -1, 2, 3}, Assignment{"a", "Ku", 1, 20, 3},
        Assignment{"a", "Ku", 1, 2, 0}, Assignment{"aK", "u", 1, 2, 3}, Assignment{}}) {
    twins.Save(other, ++mark);
    EXPECT_EQ(1 + mark, twins.Count());
  }
  twins.Save(base, 99);
  EXPECT_EQ(1 + mark, twins.Count());
  twins.ExpectSame();
}

// Values compare as texts, and an element without one of them is never found.
TEST(DishSatIndex, FormsOfNumbersAndMissingAttributes) {
  DishTwins twins(
      "<D><SAT id='a' band='Ku' LNB_Low='01' LNB_High='2' LNB_Switch='3'/>"
      "<SAT id='a' band='Ku' LNB_Low='1' LNB_High='2'/>"
      "<SAT id='a' LNB_Low='1' LNB_High='2' LNB_Switch='3'/>"
      "<SAT band='Ku' LNB_Low='1' LNB_High='2' LNB_Switch='3'/>"
      "<SAT/><Other id='a' band='Ku' LNB_Low='1' LNB_High='2' LNB_Switch='3'/></D>");
  twins.Save({"a", "Ku", 1, 2, 3}, 1);
  EXPECT_EQ(6, twins.Count());
  twins.Save({"", "Ku", 1, 2, 3}, 2);
  twins.Save({"a", "", 1, 2, 3}, 3);
  twins.Save({}, 4);
  EXPECT_EQ(9, twins.Count());
  twins.Save({}, 5);
  EXPECT_EQ(9, twins.Count());
  twins.ExpectSame();
}

TEST(DishSatIndex, ApostrophesAreNeverFound) {
  for (const Assignment& values : {Assignment{"it's", "Ku", 1, 2, 3}, Assignment{"a", "'", 1, 2, 3},
                                   Assignment{"'][@id='", "Ku", 1, 2, 3}}) {
    DishTwins twins("<D/>");
    for (int mark = 0; mark < 3; ++mark) twins.Save(values, mark);
    EXPECT_EQ(3, twins.Count()) << values.id;
    twins.ExpectSame();
  }
}

TEST(DishSatIndex, OtherSignsAreFound) {
  for (const char* id : {"\"", "&", "<", "]", "[@id", "a b", " ", "/", "%d", "a\tb"}) {
    DishTwins twins("<D/>");
    for (int mark = 0; mark < 2; ++mark) twins.Save({id, "Ku", 1, 2, 3}, mark);
    EXPECT_EQ(1, twins.Count()) << id;
    twins.ExpectSame();
  }
}

TEST(DishSatIndex, PathsOf259BytesFit) {
  for (const std::size_t length : {258U, 259U, 260U, 500U}) {
    const Assignment values = OfPathLength(std::min<std::size_t>(length, 259));
    Assignment longer = values;
    longer.id.append(length > 259 ? length - 259 : 0, 'i');
    DishTwins twins("<D/>");
    for (int mark = 0; mark < 3; ++mark) twins.Save(longer, mark);
    EXPECT_EQ(length <= 259 ? 1 : 3, twins.Count()) << length;
    twins.ExpectSame();
  }
}

TEST(DishSatIndex, NumbersAreSigned) {
  DishTwins twins("<D>" + Sat({"a", "Ku", -1, INT32_MIN, INT32_MAX}, "mark='1'") + "</D>");
  twins.Save({"a", "Ku", -1, INT32_MIN, INT32_MAX}, 2);
  EXPECT_EQ(1, twins.Count());
  twins.ExpectSame();
}

TEST(DishSatIndex, NullPointers) {
  DishTwins twins("<D/>");
  dom::Element sat;
  ExpectHr(E_POINTER, twins.Index().FindOrCreate(nullptr, sat));
  ExpectHr(E_POINTER, xml::DishSatIndex({}).FindOrCreate(Make({}).Get(), sat));
  EXPECT_EQ(0, twins.Count());
}

// A record that tells nothing is one of empty values.
TEST(DishSatIndex, SilentRecordsAreEmptyOnes) {
  class Silent : public CDishSatInfo {
   public:
    HRESULT STDMETHODCALLTYPE GetID(BSTR*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD*) override { return E_FAIL; }
  };
  DishTwins twins("<D>" + Sat({"", "", 0, 0, 0}, "mark='1'") + "</D>");
  const auto silent = ComPtr<IDishSatInfo>::Attach(new Silent);
  dom::Element sat;
  ExpectHr(S_OK, twins.Index().FindOrCreate(silent.Get(), sat));
  EXPECT_EQ("1", Attribute(sat, "mark"));
}

// An index that is left by an exception takes the last element away, if it is a new one.
TEST(DishSatIndex, TakesBackWhatItMadeAlone) {
  const TextDocument document(
      "<D><SAT id='a' band='Ku' LNB_Low='1' LNB_High='2' LNB_Switch='3'/></D>");
  const auto find = [&](const std::vector<Assignment>& assignments, bool raise) {
    try {
      xml::DishSatIndex index(document.root);
      for (const Assignment& assignment : assignments) {
        dom::Element sat;
        ExpectHr(S_OK, index.FindOrCreate(Make(assignment).Get(), sat));
      }
      if (raise) throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
    }
    return Count(document.root, "./SAT");
  };
  const Assignment old = {"a", "Ku", 1, 2, 3};
  const Assignment made = {"b", "Ku", 1, 2, 3};
  EXPECT_EQ(1, find({old}, true)) << "it was there before";
  EXPECT_EQ(1, find({made}, true));
  EXPECT_EQ(2, find({made, old}, true)) << "only the last one";
  EXPECT_EQ(3, find({made}, false));
}

// What the codec makes of an element that was found is looked at when the next one is asked for.
TEST(DishSatIndex, AnElementThatBecomesAnother) {
  const Assignment a = {"a", "Ku", 1, 2, 3};
  const Assignment b = {"b", "Ku", 1, 2, 3};
  const TextDocument document("<D>" + Sat(a, "mark='1'") + Sat(a, "mark='2'") + "</D>");
  xml::DishSatIndex index(document.root);
  dom::Element sat;
  ExpectHr(S_OK, index.FindOrCreate(Make(a).Get(), sat));
  EXPECT_EQ("1", Attribute(sat, "mark"));
  ExpectHr(S_OK, xml::DishSatElementIO(sat, Make(b).Get(), xml::Direction::Write));
  ExpectHr(S_OK, index.FindOrCreate(Make(a).Get(), sat));
  EXPECT_EQ("2", Attribute(sat, "mark"));
  ExpectHr(S_OK, index.FindOrCreate(Make(b).Get(), sat));
  EXPECT_EQ("1", Attribute(sat, "mark"));
  EXPECT_EQ(2, Count(document.root, "./SAT"));
}

TEST(DishSatIndex, RandomDishes) {
  Random random(23);
  const std::vector<std::string> texts = {
      "", "a", "b", "A", "a'", "\"", "&amp;", "Ku", std::string(190, 'x'), std::string(205, 'x')};
  const auto text = [&] { return texts[random(static_cast<std::uint32_t>(texts.size()))]; };
  const auto number = [&] { return static_cast<std::int32_t>(random(3)) - 1; };
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(round);
    std::string xml = "<D>";
    for (std::uint32_t i = 0, count = random(8); i < count; ++i) {
      xml += "<SAT mark='" + std::to_string(i) + "'";
      for (const char* name : {"id", "band"}) {
        std::string value = text();
        if (random(8) == 0 || value.find_first_of("'&") != std::string::npos) continue;
        xml += std::string(" ") + name + "='" + value + "'";
      }
      for (const char* name : {"LNB_Low", "LNB_High", "LNB_Switch"}) {
        if (random(10) == 0) continue;
        xml += std::string(" ") + name + "='" + (random(12) == 0 ? " " : "") +
               std::to_string(number()) + "'";
      }
      xml += "/>";
    }
    DishTwins twins(xml + "</D>");
    for (int step = 0; step < 15; ++step) {
      twins.Save({text(), text(), number(), number(), number()}, 1000 + step);
      if (testing::Test::HasFatalFailure()) return;
    }
    twins.ExpectSame();
  }
}

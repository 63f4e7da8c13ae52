#include "kit/check/prediction/satellite_comparison.h"

#include "kit/check/checker.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

using check::Finding;
using markup::Document;

/// A satellite without a division, whose region it takes instead, and one with a C band.
std::string CatalogueOf(const std::string& first, const std::string& frequency,
                        const std::string& lnb) {
  return "<SATELLITE_INFO><SAT_TABLE><Satellite name=\"" + first +
         "\" pos=\"192\" id=\"A\" region=\"3\" azimuthe=\"5\" elevation=\"-1\" index=\"0\">"
         "<Ku-Band><Transponder name=\"T1\" freq=\"" +
         frequency +
         "\" polarisation=\"LinearH\" symbolRate=\"22000\" innerFECRate=\"3/4\"/>"
         "<Transponder freq=\"11900000\" polarisation=\"Circularl\" modulation=\"8PSK\"/>"
         "</Ku-Band></Satellite>"
         "<Satellite name=\"Two\" id=\"B\" region=\"Europe\" division=\"4\" index=\"7\">"
         "<C-Band><Transponder name=\"T3\" freq=\"3700000\"/></C-Band></Satellite></SAT_TABLE>"
         "<SAT_TABLE><Satellite name=\"never read\"/></SAT_TABLE>"
         "<LNB_TABLE><LNB type=\"Universal\" lowFreq=\"9750000\" highFreq=\"10600000\" "
         "switchFreq=\"" +
         lnb + "\"/><LNB lowFreq=\"-5\"/></LNB_TABLE></SATELLITE_INFO>";
}

std::string DishesOf(const std::string& low) {
  return "<USER_SETTINGS><SAT_SETTING><DISH_1><SAT id=\"A\" band=\"Ku-Band\" LNB_Low=\"" + low +
         "\" LNB_High=\"10600000\" LNB_Switch=\"11700000\"/><SAT id=\"B\"/></DISH_1>"
         "<DISH_3><SAT band=\"C-Band\"/></DISH_3></SAT_SETTING></USER_SETTINGS>";
}

const std::string kCatalogue = CatalogueOf("One", "11500000", "11700000");
const std::string kDishes = DishesOf("9750000");

using Sentences = std::vector<std::string>;

Sentences Said(const std::vector<Finding>& findings) {
  Sentences sentences;
  for (const Finding& finding : findings) {
    EXPECT_EQ("ZT900", finding.code->name);
    sentences.push_back(finding.path + ": " + finding.text);
  }
  return sentences;
}

class CheckSatellites : public testing::Test {
 protected:
  /// The library gets other bytes than were looked at, as if it read something else in them.
  Sentences Compare(const std::string& seen, const std::string& read) {
    const Document document = m_checker.Read(seen);
    return Said(CompareCatalogue(document, read, m_checker.Text()));
  }
  Sentences CompareDishes(const std::string& seen, const std::string& read) {
    const Document document = m_checker.Read(seen);
    return Said(check::CompareDishes(document, read, m_checker.Text()));
  }
  /// What a repair of nothing, or of a finding at the nth element of a name, would do.
  std::optional<std::string> Lost(const std::string& before, const std::string& after,
                                  const std::string& concerned = "", int place = 0) {
    const Document first = m_checker.Read(before);
    Finding finding;
    for (markup::Index i = 0; i < first.Elements().size() && !concerned.empty(); ++i) {
      if (first.NameOf(first.Elements()[i]) == concerned && place-- == 0) finding.element = i;
    }
    const std::vector<const Finding*> mended = {&finding};
    const Document second = m_checker.Read(after);
    return before.starts_with("<USER")
               ? WhatIsLostOfDishes(first, mended, second, m_checker.Text())
               : WhatIsLostOfCatalogue(first, mended, second, m_checker.Text());
  }

  check::Checker m_checker{{}};
};

TEST_F(CheckSatellites, AreReadAsPredicted) {
  EXPECT_EQ(Sentences(), Compare(kCatalogue, kCatalogue));
  EXPECT_EQ(Sentences(), CompareDishes(kDishes, kDishes));
  for (const std::string other : {"<A/>", "<A><SAT_TABLE/></A>", "<A><SAT_SETTING/></A>"}) {
    EXPECT_EQ(Sentences(), Compare(other, other)) << other;
    EXPECT_EQ(Sentences(), CompareDishes(other, other)) << other;
  }
}

TEST_F(CheckSatellites, TellWhatTheLibraryReadsOtherwise) {
  EXPECT_EQ(
      Sentences({"SAT_TABLE[1]/Satellite[index=0]: the library reads this satellite otherwise"}),
      Compare(kCatalogue, CatalogueOf("Uno", "11500000", "11700000")));
  EXPECT_EQ(1U, Compare(kCatalogue, CatalogueOf("One", "11500001", "11700000")).size());
  EXPECT_EQ(1U, Compare(kCatalogue, CatalogueOf("One", "11500000", "0")).size());
  EXPECT_EQ(2U, Compare(kCatalogue, "<A/>").size());
  EXPECT_EQ(1U, CompareDishes(kDishes, DishesOf("9750001")).size());
  EXPECT_EQ(2U, CompareDishes(kDishes, "<A/>").size());
}

TEST_F(CheckSatellites, AreWhatTheyWereWhereNothingIsFound) {
  EXPECT_EQ(std::nullopt, Lost(kCatalogue, kCatalogue));
  EXPECT_EQ("satellite 1 would not be what it is",
            Lost(kCatalogue, CatalogueOf("Uno", "11500000", "11700000")));
  EXPECT_EQ(std::nullopt,
            Lost(kCatalogue, CatalogueOf("Uno", "11500000", "11700000"), "Satellite"));
  const std::string otherFrequency = CatalogueOf("One", "11500001", "11700000");
  EXPECT_EQ("transponders of satellite 1 would not be what they are",
            Lost(kCatalogue, otherFrequency));
  // What is found at a satellite says nothing about its transponders.
  EXPECT_NE(std::nullopt, Lost(kCatalogue, otherFrequency, "Satellite"));
  EXPECT_EQ(std::nullopt, Lost(kCatalogue, otherFrequency, "Transponder", 0));
  EXPECT_NE(std::nullopt, Lost(kCatalogue, otherFrequency, "Transponder", 1));
  EXPECT_EQ("LNB types would not be what they are",
            Lost(kCatalogue, CatalogueOf("One", "11500000", "0")));
  EXPECT_EQ(std::nullopt, Lost(kCatalogue, CatalogueOf("One", "11500000", "0"), "LNB"));
  EXPECT_EQ("a satellite would be gone", Lost(kCatalogue, "<A/>"));
}

TEST_F(CheckSatellites, AreAssignedAsTheyWere) {
  EXPECT_EQ(std::nullopt, Lost(kDishes, kDishes));
  EXPECT_EQ("assignments of dish 1 would not be what they are", Lost(kDishes, DishesOf("1")));
  EXPECT_EQ(std::nullopt, Lost(kDishes, DishesOf("1"), "SAT"));
  EXPECT_NE(std::nullopt, Lost(kDishes, "<USER_SETTINGS/>", "SAT", 2));
}

}  // namespace

}  // namespace zortunedex::kit

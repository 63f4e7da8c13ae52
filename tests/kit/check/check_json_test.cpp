#include "kit/check/check_json.h"

#include <gtest/gtest.h>

#include "kit/check/known_countries.h"

namespace zortunedex::kit {

namespace {

check::Finding Some() {
  check::Finding finding;
  finding.code = check::FindCode("ZT021");
  finding.file = "UserSettings.xml";
  finding.place = markup::Place{3, 1};
  finding.text = "it says \"no\"";
  finding.repair = check::Repair::Yes;
  return finding;
}

constexpr char kFinding[] = R"(    {
      "code": "ZT021",
      "severity": "error",
      "file": "UserSettings.xml",
      "line": 3,
      "column": 1,
      "path": null,
      "attribute": null,
      "value": null,
      "text": "it says \"no\"",
      "repair": "yes",
      "option": null
    }
)";

TEST(CheckJson, IsTextWithEveryKey) {
  EXPECT_EQ(std::string("{\n  \"tunedex\": \"check\",\n  \"version\": 1,\n  \"findings\": [\n") +
                kFinding + "  ]\n}",
            check::CheckJson({Some()}));
  check::Repaired result;
  result.left = {Some()};
  EXPECT_EQ(std::string("{\n  \"tunedex\": \"repair\",\n  \"version\": 1,\n  \"dryRun\": true,\n"
                        "  \"repaired\": [],\n  \"left\": [\n") +
                kFinding + "  ]\n}",
            check::RepairJson(result, true));
}

TEST(KnownCountries, AreThoseOfTheTable) {
  EXPECT_TRUE(check::IsCountry(49));
  EXPECT_FALSE(check::IsCountry(0));
  EXPECT_FALSE(check::IsCountry(5));
}

}  // namespace

}  // namespace zortunedex::kit

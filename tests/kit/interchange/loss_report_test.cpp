#include "kit/interchange/loss_report.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

#include "kit/interchange/loss_json.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::CodeMeaning;
using interchange::CodeName;
using interchange::Direction;
using interchange::Losses;
using nlohmann::ordered_json;

Losses Some() {
  Losses losses;
  losses.Add(Code::NumberRounded, "freq", {5U, "ZDF", 0}, std::int64_t{11361750},
             std::int64_t{11362000});
  losses.Add(Code::NoPlace, "lock", {5U, "ZDF", 0}, true);
  losses.Add(Code::NumberRounded, "freq", {std::nullopt, "arte", 12}, std::string("x"));
  return losses;
}

TEST(LossReport, IsADocumentByCodeAndField) {
  const Losses losses = Some();
  EXPECT_EQ(ordered_json::parse(R"({
      "tunedex": "loss", "version": 1, "direction": "export", "format": "vdr",
      "read": 7, "written": 6, "losses": [
        {"code": "L101", "field": "lock", "count": 1, "channels": [
          {"index": 5, "name": "ZDF", "line": null, "value": true, "became": null}]},
        {"code": "L202", "field": "freq", "count": 2, "channels": [
          {"index": 5, "name": "ZDF", "line": null, "value": 11361750, "became": 11362000},
          {"index": null, "name": "arte", "line": 12, "value": "x", "became": null}]}]})"),
            interchange::LossDocument({Direction::Export, "vdr", 7, 6, losses}));
  EXPECT_EQ("import",
            interchange::LossDocument({Direction::Import, "vdr", 7, 6, losses}).at("direction"));
}

TEST(LossReport, IsTextForHosts) {
  const Losses losses = Some();
  const interchange::LossReport report{Direction::Export, "vdr", 7, 6, losses};
  EXPECT_EQ(interchange::LossDocument(report).dump(2), interchange::LossJson(report));
}

TEST(LossReport, IsALineACode) {
  const Losses losses = Some();
  EXPECT_EQ(
      "L101 field without a place in the target, once: lock\n"
      "L202 number rounded, 2 times: freq\n",
      interchange::LossText({Direction::Export, "vdr", 7, 6, losses}));
  EXPECT_EQ("", interchange::LossText({Direction::Export, "vdr", 7, 6, Losses()}));
}

TEST(LossReport, ShortensWhatFilesCallTheirKeys) {
  Losses losses;
  for (int i = 10; i < 32; ++i) losses.Add(Code::KeyUnknown, "k" + std::to_string(i), {});
  losses.Add(Code::LineNotUnderstood, std::string(59, 'x') + "\xC3\xA4" + std::string(1000, 'x'),
             {});
  EXPECT_EQ("L501 line not understood: left out, once: " + std::string(59, 'x') +
                "...\n"
                "L502 unknown key ignored, 22 times: k10, k11, k12, k13, k14, k15, k16, k17, k18, "
                "k19, k20, k21, k22, k23, k24, k25, k26, k27, k28, k29 and 2 more\n",
            interchange::LossText({Direction::Import, "csv", 1, 1, losses}));
}

TEST(LossReport, IsADocumentOfBytesThatAreNoText) {
  Losses losses;
  losses.Add(Code::KeyUnknown, "k\xFF", {std::nullopt, "n\xC3", 3}, std::string("v\xE4u"),
             std::string("b\x80"));
  const ordered_json document =
      ordered_json::parse(interchange::LossJson({Direction::Import, "csv", 1, 1, losses}));
  const ordered_json& loss = document.at("losses").at(0);
  EXPECT_EQ("k\uFFFD", loss.at("field"));
  const ordered_json& channel = loss.at("channels").at(0);
  EXPECT_EQ("n\uFFFD", channel.at("name"));
  EXPECT_EQ("v\uFFFDu", channel.at("value"));
  EXPECT_EQ("b\uFFFD", channel.at("became"));
}

TEST(LossReport, CountsWhatWasTakenFromAnother) {
  Losses losses = Some();
  losses.Take(Some());
  EXPECT_EQ(6U, losses.All().size());
  EXPECT_TRUE(losses.Has(Code::NoPlace));
  EXPECT_FALSE(losses.Has(Code::MarkDropped));
}

TEST(LossReport, CountsWhatIsMoreThanItKeeps) {
  Losses losses(2);
  losses.Take(Some());
  losses.Add(Code::LineNotUnderstood, "line", {});
  Losses again(4);
  again.Add(Code::LineNotUnderstood, "", {});
  again.Take(std::move(losses));
  again.Add(Code::LineNotUnderstood, "line", {});
  again.Add(Code::LineNotUnderstood, "line", {});
  EXPECT_EQ(4U, again.All().size());
  EXPECT_TRUE(losses.Beyond().empty());
  EXPECT_TRUE(again.Has(Code::NumberRounded));
  EXPECT_EQ(
      "L101 field without a place in the target, once: lock\n"
      "L202 number rounded, 2 times: freq\n"
      "L501 line not understood: left out, 4 times: line\n",
      interchange::LossText({Direction::Import, "vdr", 1, 1, again}));
  const ordered_json document = interchange::LossDocument({Direction::Import, "vdr", 1, 1, again});
  std::size_t count = 0;
  std::size_t told = 0;
  for (const ordered_json& loss : document.at("losses")) {
    count += loss.at("count").get<std::size_t>();
    told += loss.at("channels").size();
    const bool isOfAll = loss.at("field") == "";
    EXPECT_EQ(isOfAll, loss.at("count") != loss.at("channels").size());
  }
  EXPECT_EQ(7U, count);
  EXPECT_EQ(4U, told);
}

TEST(LossReport, HasACodeForEveryMeaningOfTheDocument) {
  std::ifstream file(ZORTUNEDEX_TEST_DATA "/../../docs/interchange.md", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  std::string table;
  for (const CodeMeaning& meaning : interchange::Codes()) {
    table += "| " + CodeName(meaning.code) + " | " + meaning.text + " |\n";
    EXPECT_STREQ(meaning.text, interchange::MeaningOf(meaning.code));
  }
  EXPECT_EQ(24U, interchange::Codes().size());
  EXPECT_NE(std::string::npos, text.find("|---|---|\n" + table + "<!-- /codes -->"));
}

}  // namespace

}  // namespace zortunedex::kit

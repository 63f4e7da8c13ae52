// What the lists of the samples lose on their way out: the table of the document.
#include <fstream>
#include <iterator>
#include <set>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

/// The codes of an export; "-" where the format has no form for the type.
std::string LossesOf(const ordered_json& set, const std::string& format, const TempDir& files) {
  const Outcome out =
      RunTool({"--dir", ZORTUNEDEX_SAMPLES "/home", "--country", set.at("country").dump(),
               "--signal", set.at("signal"), "--json", "channels", "export", "--format", format,
               "-o", files.File(format), format == "m3u" ? "--url=http://h/{index}" : "--strict"});
  if (out.status == 1) {
    EXPECT_NE(std::string::npos, out.err.find("has no form for")) << out.err;
    return "-";
  }
  const ordered_json report = ordered_json::parse(out.out);
  EXPECT_EQ(set.at("channels"), report.at("written"));
  std::set<std::string> codes;
  for (const ordered_json& loss : report.at("losses")) codes.insert(loss.at("code"));
  std::string text;
  for (const std::string& code : codes) text += (text.empty() ? "" : " ") + code;
  return text;
}

TEST(ExchangeLosses, OfTheSamplesAreThoseOfTheDocument) {
  const TempDir files;
  std::string table;
  std::size_t channels = 0;
  const ordered_json info = RunTool({"--dir", ZORTUNEDEX_SAMPLES "/home", "--json", "info"}).Json();
  for (const ordered_json& set : info) {
    table += "| " + set.at("country").dump() + " " + set.at("signal").get<std::string>() + " | " +
             set.at("channels").dump() + " |";
    channels += set.at("channels").get<std::size_t>();
    for (const char* format : {"csv", "json"}) EXPECT_EQ("", LossesOf(set, format, files));
    for (const char* format : {"dvbv5", "vdr", "enigma2", "m3u"}) {
      table += " " + LossesOf(set, format, files) + " |";
    }
    table += "\n";
  }
  EXPECT_EQ(165U, channels);
  std::ifstream file(std::string(ZORTUNEDEX_DOCS) + "/interchange.md", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_NE(std::string::npos,
            text.find("|---|---|---|---|---|---|\n" + table + "<!-- /losses -->"))
      << table;
}

}  // namespace

}  // namespace zortunedex::kit::tool

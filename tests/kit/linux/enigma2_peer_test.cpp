// Settings of Enigma2 as a reader of its own, in Python, understands them.
//
// Linux only: the interpreter is found there
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "kit/interchange/enigma2/enigma2_words.h"
#include "kit/interchange/exchange.h"
#include "kit/json/channel_json.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using nlohmann::ordered_json;

/// What the reader answers for an export of the list, of the form that is named.
ordered_json ReadByScript(const interchange::Output& output, const char* form) {
  const TempDir folder;
  std::filesystem::create_directory(folder.File("settings"));
  for (const interchange::OutputFile& file : output.files) {
    folder.Write("settings/" + file.name, file.bytes);
  }
  const std::string line =
      "python3 '" ZORTUNEDEX_TEST_DATA "/../kit/interchange/enigma2/read_settings.py' '" +
      folder.File("settings") + "' " + form + " > '" + folder.File("read") + "'";
  EXPECT_EQ(0, std::system(line.c_str()));
  return ordered_json::parse(folder.Read("read"), nullptr, false);
}

/// The first entry of a list as the reader has it; the settings have no place for more.
ordered_json FirstOf(const ordered_json& block, const char* list, bool withType) {
  ordered_json first = ordered_json::array();
  if (!block.contains(list) || block[list].empty()) return first;
  const ordered_json& entry = block[list][0];
  first.push_back(withType ? ordered_json{entry["type"], entry["pid"]} : entry["pid"]);
  return first;
}

ordered_json Expected(const Exchange& exchange, const Channel& channel) {
  const ordered_json block = channel_json::Block(channel, exchange.Signal(), exchange.Narrow());
  ordered_json expected = {{"name", utf::FromWide(channel.name)},
                           {"serviceID", block["serviceID"]},
                           {"TSID", channel.tsid},
                           {"ONID", block["ONID"]},
                           {"serviceType", block["serviceType"]},
                           {"frequency", channel.frequency}};
  if (exchange.Signal() == InputSignalDVBSatellite) {
    for (const char* name : {"symbolRate", "polarisation", "innerFECRate", "orbitalPosition",
                             "westPosition", "spectralInversion", "modulation"}) {
      expected[name] = block["SatelliteParams"][name];
    }
  }
  expected["networkName"] = block["networkName"];
  expected["PcrPID"] = block["PcrPID"];
  expected["CA"] = block["CA"] >= 0x100 ? block["CA"] : ordered_json(0);
  expected["video"] = FirstOf(block, "VideoStream", true);
  expected["audio"] = FirstOf(block, "AudioStream", true);
  expected["teletext"] = FirstOf(block, "TeletextStream", false);
  const bool isOwn = channel.displayName != channel.name;
  expected["own"] =
      isOwn ? ordered_json(utf::FromWide(channel.displayName)) : ordered_json(nullptr);
  expected["favourite"] = channel.favorite != 0;
  return expected;
}

TEST(Enigma2Peer, UnderstandsEveryChannelOfTheSamples) {
  if (std::system("command -v python3 > /dev/null") != 0) {
    GTEST_SKIP() << "left out: python3 is missing, scripts/setup --peers installs it";
  }
  std::size_t channels = 0;
  for (const InputSignalType signal : interchange::enigma2::Signals()) {
    SCOPED_TRACE(SignalTypeName(signal));
    const Exchange exchange(49, signal);
    const interchange::Export out = exchange.Out("enigma2");
    for (const char* form : {"", "5"}) {
      const ordered_json read = ReadByScript(out.output, form);
      ASSERT_EQ(out.output.written.size(), read.size());
      for (std::size_t i = 0; i < read.size(); ++i) {
        const Channel& channel = exchange.Channels()[out.output.written[i]];
        EXPECT_EQ(nlohmann::json(Expected(exchange, channel)), nlohmann::json(read[i]));
      }
    }
    channels += out.output.written.size();
  }
  // 58 of DVB-S, 20 of DVB-T.
  EXPECT_EQ(78U, channels);
}

}  // namespace

}  // namespace zortunedex::kit

#include "kit/interchange/vdr_channels.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "kit/model/channel_layout.h"
#include "kit/model/field_setter.h"

namespace zortunedex::kit {

using interchange::Code;
using interchange::Import;
using interchange::Loss;

void AddChannel(Exchange& exchange, UINT index, const std::string& values,
                const ChannelTexts& texts) {
  const FieldSetter setter(exchange.Signal(), exchange.Narrow());
  Channel channel = EmptyChannel(LayoutOf(exchange.Signal()));
  channel.index = index;
  std::istringstream words(values);
  for (std::string word; words >> word;) {
    const std::size_t mark = word.find('=');
    setter.Set(channel, {word.substr(0, mark), word.substr(mark + 1)});
  }
  setter.Set(channel, {"name", texts.name});
  if (!texts.network.empty()) setter.Set(channel, {"networkName", texts.network});
  channel.displayName = *utf::ToWide(texts.shown);
  exchange.Channels().push_back(exchange.Stored(channel));
}

void FillWithRandomChannels(Exchange& exchange, Random& random, UINT count) {
  const FieldSetter setter(exchange.Signal(), exchange.Narrow());
  const bool isSatellite = exchange.Signal() == InputSignalDVBSatellite;
  const bool isAtsc =
      exchange.Signal() == InputSignalATSCAntenna || exchange.Signal() == InputSignalATSCCable;
  UINT index = 0;
  for (UINT i = 0; i < count; ++i) {
    index += 1 + (random(4) == 0 ? random(50) : 0);
    Channel channel = RandomChannel(exchange, random, index);
    const auto set = [&](const char* field, std::uint32_t value) {
      if (random(20) != 0) setter.Set(channel, {field, std::to_string(value)});
    };
    if (isAtsc) {
      set("programNumber", random(20));
      set("physicalChannel", 2 + random(60));
    } else {
      set("serviceID", random(4) == 0 ? random(4) : random(0x10000));
      set("ONID", random(3) == 0 ? 0 : random(0x10000));
      set("TSID", random(3) == 0 ? 0 : random(0x10000));
      set("freq", isSatellite ? 10'700'000 + random(2'000'000) : 174'000 + random(700'000));
      set("CA", random(2) * (random(2) == 0 ? 1 : random(0x10000)));
      set("PcrPID", random(0x2000));
    }
    if (isSatellite) {
      set("orbitalPosition", random(1'801));
      set("westPosition", random(2));
      set("symbolRate", random(45'000));
    }
    exchange.Channels().push_back(exchange.Stored(channel));
  }
}

std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

Accounts AccountsOf(const Exchange& exchange, const std::string& bytes) {
  Accounts accounts;
  std::set<std::size_t> known;
  interchange::Losses losses;
  interchange::Input input;
  input.bytes = bytes;
  const std::vector<Channel> none;
  const interchange::ImportResult result =
      interchange::FindFormat("vdr")->read(input, {exchange.Context(), none}, losses);
  for (const auto& channel : result.channels) known.insert(channel.line);
  accounts.taken = known.size();
  for (const Loss& loss : losses.All()) {
    known.insert(loss.place.line);
    accounts.notUnderstood += loss.code == Code::LineNotUnderstood;
  }
  accounts.lines = static_cast<std::size_t>(std::ranges::count(bytes, '\n'));
  // A line that only says a number is in the channel behind it.
  std::istringstream lines(bytes);
  std::string line;
  for (std::size_t i = 1; std::getline(lines, line); ++i) {
    const bool isNumber = line.starts_with(":@") && line.find(' ') == std::string::npos;
    if (!known.contains(i) && !isNumber) accounts.missing += " " + std::to_string(i);
  }
  return accounts;
}

}  // namespace zortunedex::kit

#include "kit/interchange/complete_report.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "kit/json/channel_json.h"

namespace zortunedex::kit {

using interchange::Code;
using nlohmann::ordered_json;

namespace {

/// Values that are nothing are equal.
bool IsNothing(const ordered_json& value) {
  return value.is_null() || value == 0 || value == "" || value == "NotSet";
}

using Values = std::map<std::string, ordered_json>;

void AddMember(const std::string& name, const ordered_json& value, Values& values) {
  if (name.starts_with("numOf")) return;
  if (!value.is_array()) {
    values[name] = value;
    return;
  }
  for (std::size_t i = 0; i < value.size(); ++i) {
    for (const auto& [key, part] : value[i].items()) {
      values[name + "." + key + "#" + std::to_string(i)] = part;
    }
  }
}

Values ValuesOf(const Exchange& exchange, const Channel& channel) {
  // Under the names that the file has for what a record answers. The rest follows from the block.
  static const std::map<std::string, std::string> kNames = {
      {"index", "index"},    {"number", "physicalChannel"},
      {"frequency", "freq"}, {"offset", "freqOffset"},
      {"tsid", "TSID"},      {"favorite", "favor"},
      {"lock", "lock"},      {"displayName", "nameDisplay"},
      {"name", "name"}};
  Values values;
  const ordered_json summary = channel_json::Summary(channel);
  for (const auto& [name, value] : summary.items()) {
    const auto found = kNames.find(name);
    if (found == kNames.end()) continue;
    const bool isSegment = exchange.Signal() == InputSignalISDBTerrestrialOneSeg;
    values[isSegment && name == "frequency" ? "Frequency" : found->second] = value;
  }
  const ordered_json block = channel_json::Block(channel, exchange.Signal(), exchange.Narrow());
  for (const auto& [name, value] : block.items()) {
    if (name != "SatelliteParams") {
      AddMember(name, value, values);
      continue;
    }
    for (const auto& [key, parameter] : value.items()) AddMember(key, parameter, values);
  }
  return values;
}

/// "AudioStream.pid#3" is of AudioStream.pid, or of AudioStream where the entry is not in both.
std::string FieldOf(const std::string& name, const Values& other) {
  const std::size_t mark = name.find('#');
  if (mark == std::string::npos) return name;
  return name.substr(0, other.contains(name) ? mark : name.find('.'));
}

bool IsAssumption(Code code) { return code >= Code::SystemAssumed && code <= Code::TuningDerived; }

}  // namespace

std::vector<std::string> FieldsThatDiffer(const Exchange& exchange, const Channel& a,
                                          const Channel& b) {
  const Values left = ValuesOf(exchange, a);
  const Values right = ValuesOf(exchange, b);
  std::set<std::string> fields;
  for (const auto& [mine, other] : {std::pair(&left, &right), std::pair(&right, &left)}) {
    for (const auto& [name, value] : *mine) {
      const auto found = other->find(name);
      const bool isEntry = name.find('#') != std::string::npos;
      if (found == other->end()) {
        if (isEntry || !IsNothing(value)) fields.insert(FieldOf(name, *other));
      } else if (value != found->second &&
                 (isEntry || !IsNothing(value) || !IsNothing(found->second))) {
        fields.insert(FieldOf(name, *other));
      }
    }
  }
  return {fields.begin(), fields.end()};
}

void ExpectCompleteReport(const Exchange& exchange, const char* format,
                          std::string (*lasting)(const std::string& bytes)) {
  const interchange::Export out = exchange.Out(format);
  const interchange::Import in =
      exchange.In(format, InputOf(*interchange::FindFormat(format), out.output));
  ASSERT_EQ(out.output.written.size(), in.table.channels.size());
  for (std::size_t i = 0; i < in.table.channels.size(); ++i) {
    const Channel& was = exchange.Channels()[out.output.written[i]];
    SCOPED_TRACE("channel " + std::to_string(was.index));
    std::set<std::string> named;
    std::set<std::string> lost;
    for (const interchange::Loss& loss : out.losses.All()) {
      if (loss.place.index != was.index) continue;
      named.insert(loss.field);
      if (!IsAssumption(loss.code)) lost.insert(loss.field);
    }
    const std::vector<std::string> differ = FieldsThatDiffer(exchange, was, in.table.channels[i]);
    for (const std::string& field : differ) EXPECT_TRUE(named.contains(field)) << field;
    for (const std::string& field : lost) {
      EXPECT_TRUE(std::ranges::binary_search(differ, field)) << field << " is not lost";
    }
  }
  // What is left out has a loss of its own.
  std::set<std::size_t> written(out.output.written.begin(), out.output.written.end());
  for (std::size_t i = 0; i < exchange.Channels().size(); ++i) {
    const bool hasLoss = std::ranges::any_of(out.losses.All(), [&](const auto& loss) {
      return loss.place.index == exchange.Channels()[i].index;
    });
    EXPECT_TRUE(written.contains(i) || hasLoss) << "channel " << i << " is gone without a word";
  }
  Exchange again = Exchange(exchange.Context().country, exchange.Signal());
  again.Channels() = in.table.channels;
  const interchange::Export second = again.Out(format);
  ASSERT_EQ(out.output.files.size(), second.output.files.size());
  for (std::size_t i = 0; i < out.output.files.size(); ++i) {
    const interchange::OutputFile& file = out.output.files[i];
    EXPECT_EQ(file.name, second.output.files[i].name);
    EXPECT_EQ(lasting == nullptr ? file.bytes : lasting(file.bytes), second.output.files[i].bytes);
  }
}

}  // namespace zortunedex::kit

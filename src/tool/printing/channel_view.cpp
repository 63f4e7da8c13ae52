#include "tool/printing/channel_view.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/json/channel_json.h"
#include "kit/text/signal_types.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace channel_view {
namespace {

std::vector<std::string> ToRow(const Channel& channel) {
  return {std::to_string(channel.index),     std::to_string(channel.number),
          std::to_string(channel.frequency), std::to_string(channel.offset),
          std::to_string(channel.tsid),      ServiceTypeName(channel.serviceType),
          std::to_string(channel.favorite),  channel.lock ? "yes" : "no",
          channel.scrambled ? "yes" : "no",  channel.mhp ? "yes" : "no",
          Printable(channel.name),           Printable(channel.displayName)};
}

std::string Scalar(const ordered_json& value) {
  if (!value.is_string()) return value.dump();
  return Printable(*utf::ToWide(value.get_ref<const std::string&>()));
}

void AddLine(const std::string& name, const ordered_json& value, std::string& text) {
  text += name + "=" + Scalar(value) + "\n";
}

/// Attributes of a block, one line for every one and for every list entry, in the form that --set
/// takes.
std::string BlockText(const ordered_json& block) {
  std::string text;
  for (const auto& [name, value] : block.items()) {
    if (value.is_object()) {
      for (const auto& [inner, member] : value.items()) AddLine(inner, member, text);
    } else if (value.is_array()) {
      for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string entry = name + "[" + std::to_string(i + 1) + "].";
        for (const auto& [inner, member] : value[i].items()) AddLine(entry + inner, member, text);
      }
    } else {
      AddLine(name, value, text);
    }
  }
  return text;
}

}  // namespace

void PrintTable(const std::vector<Channel>& channels) {
  std::vector<std::vector<std::string>> rows = {{"INDEX", "NUMBER", "FREQUENCY", "OFFSET", "TSID",
                                                 "SERVICE", "FAVORITE", "LOCK", "SCRAMBLED", "MHP",
                                                 "NAME", "DISPLAY NAME"}};
  for (const Channel& channel : channels) rows.push_back(ToRow(channel));
  tool::PrintTable(rows);
}

void PrintTable(const std::vector<Channel>& channels, const std::vector<ChannelField>& fields,
                const NarrowText& narrow) {
  std::vector<std::vector<std::string>> rows(1);
  for (const ChannelField& field : fields) rows.front().push_back(field.Name());
  for (const Channel& channel : channels) {
    std::vector<std::string> row;
    row.reserve(fields.size());
    for (const ChannelField& field : fields) row.push_back(FieldText(field.Of(channel, narrow)));
    rows.push_back(std::move(row));
  }
  tool::PrintTable(rows);
}

void PrintWhole(const std::vector<Channel>& channels, InputSignalType signal,
                const NarrowText& narrow) {
  const char* const names[] = {"index",    "number", "frequency", "offset", "tsid", "service",
                               "favorite", "lock",   "scrambled", "mhp",    "name", "display name"};
  for (std::size_t i = 0; i < channels.size(); ++i) {
    const std::vector<std::string> values = ToRow(channels[i]);
    std::vector<std::vector<std::string>> rows;
    for (std::size_t j = 0; j < values.size(); ++j) rows.push_back({names[j], values[j]});
    if (i != 0) std::cout << '\n';
    tool::PrintTable(rows);
    std::cout << BlockText(channel_json::Block(channels[i], signal, narrow));
  }
}

void PrintJson(const std::vector<Channel>& channels, InputSignalType signal,
               const NarrowText& narrow) {
  PrintJsonArray(channels.size(),
                 [&](std::size_t i) { return channel_json::Whole(channels[i], signal, narrow); });
}

}  // namespace channel_view

}  // namespace zortunedex::kit::tool

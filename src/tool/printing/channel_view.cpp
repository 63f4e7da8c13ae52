#include "tool/printing/channel_view.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/text/signal_types.h"
#include "tool/printing/block_view.h"
#include "tool/printing/output.h"

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

}  // namespace

ordered_json ToJson(const Channel& channel) {
  ordered_json object = {{"index", channel.index},
                         {"number", channel.number},
                         {"name", utf::FromWide(channel.name)},
                         {"displayName", utf::FromWide(channel.displayName)},
                         {"frequency", channel.frequency},
                         {"offset", channel.offset},
                         {"tsid", channel.tsid},
                         {"serviceType", ServiceTypeName(channel.serviceType)},
                         {"favorite", channel.favorite},
                         {"lock", channel.lock != 0},
                         {"scrambled", channel.scrambled != 0},
                         {"mhp", channel.mhp != 0}};
  if (channel.serviceType == ServiceUnknown) object["serviceType"] = nullptr;
  return object;
}

void Print(const std::vector<Channel>& channels, bool json) {
  if (json) {
    ordered_json array = ordered_json::array();
    for (const Channel& channel : channels) array.push_back(ToJson(channel));
    return PrintJson(array);
  }
  std::vector<std::vector<std::string>> rows = {{"INDEX", "NUMBER", "FREQUENCY", "OFFSET", "TSID",
                                                 "SERVICE", "FAVORITE", "LOCK", "SCRAMBLED", "MHP",
                                                 "NAME", "DISPLAY NAME"}};
  for (const Channel& channel : channels) rows.push_back(ToRow(channel));
  PrintTable(rows);
}

void PrintWhole(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                bool json) {
  ordered_json object = ToJson(channel);
  ordered_json block = block_view::ToJson(channel, signal, narrow);
  if (json) {
    object["block"] = std::move(block);
    return PrintJson(ordered_json::array({std::move(object)}));
  }
  const std::vector<std::string> values = ToRow(channel);
  const char* const names[] = {"index",    "number", "frequency", "offset", "tsid", "service",
                               "favorite", "lock",   "scrambled", "mhp",    "name", "display name"};
  std::vector<std::vector<std::string>> rows;
  for (std::size_t i = 0; i < values.size(); ++i) rows.push_back({names[i], values[i]});
  PrintTable(rows);
  std::cout << block_view::ToText(block);
}

}  // namespace channel_view

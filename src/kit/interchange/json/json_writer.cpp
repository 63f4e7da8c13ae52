#include "kit/interchange/json/json_writer.h"

#include <nlohmann/json.hpp>

#include "kit/json/channel_json.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace interchange {

void WriteJson(const ExportRequest& request, Output& output, Losses&) {
  const ListContext& context = request.context;
  ordered_json document = ordered_json::object();
  document["tunedex"] = "channels";
  document["version"] = 1;
  document["country"] = context.country;
  document["signal"] = SignalTypeName(context.signal);
  document["units"] = {{"frequency", "kHz"}, {"symbolRate", "kSymbol/s"}};
  document["codepage"] = context.codePage ? ordered_json(*context.codePage) : ordered_json(nullptr);
  ordered_json& channels = document["channels"] = ordered_json::array();
  for (std::size_t i = 0; i < request.channels.size(); ++i) {
    const Channel& channel = request.channels[i];
    ordered_json json = channel_json::Whole(channel, context.signal, context.narrow);
    // A mark says less than a lock of another number.
    if (channel.lock != 0 && channel.lock != 1) json["lock"] = channel.lock;
    channels.push_back(std::move(json));
    output.written.push_back(i);
  }
  output.Bytes() = document.dump(2) + "\n";
}

}  // namespace interchange

}  // namespace zortunedex::kit

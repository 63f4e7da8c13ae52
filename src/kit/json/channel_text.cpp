#include "kit/json/channel_text.h"

#include <nlohmann/json.hpp>

#include "kit/json/channel_json.h"

namespace zortunedex::kit {

std::string ChannelJson(const Channel& channel, InputSignalType signal, const NarrowText& narrow) {
  return channel_json::Whole(channel, signal, narrow).dump(2);
}

}  // namespace zortunedex::kit

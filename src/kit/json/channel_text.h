#pragma once

#include <string>

#include "kit/model/channel.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit {

/// The channel as `channels show --json` prints it: what the record answers, and its station block
/// as the last member. Indented by two blanks, UTF-8, no line feed at the end.
std::string ChannelJson(const Channel& channel, InputSignalType signal, const NarrowText& narrow);

}  // namespace zortunedex::kit

// Channels of directories whose host counts in other units than ours.
#pragma once

#include <vector>

#include "kit/interchange/loss.h"
#include "kit/model/channel.h"
#include "tool/options/exchange.h"

namespace zortunedex::kit::tool {

/// The channel in our units, kHz and thousands of symbols: rounded where the file's are smaller.
/// Raises a Failure for what is beyond 32 bits then.
Channel FromFileUnit(Channel channel, InputSignalType signal, FileUnit unit);
std::vector<Channel> FromFileUnit(std::vector<Channel> channels, InputSignalType signal,
                                  FileUnit unit);

/// The channel as the file has it. What the file's unit does not tell is rounded (L202), what does
/// not fit is 0 (L503).
Channel ToFileUnit(Channel channel, InputSignalType signal, FileUnit unit,
                   interchange::Losses& losses);

/// The same of a channel that the file had as `stored`: what did not change is what it was.
Channel ToFileUnit(const Channel& channel, const Channel& stored, InputSignalType signal,
                   FileUnit unit);

}  // namespace zortunedex::kit::tool

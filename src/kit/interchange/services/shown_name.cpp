#include "kit/interchange/services/shown_name.h"

#include "kit/interchange/services/channel_builder.h"

namespace zortunedex::kit::interchange {

WideText FilledName(const Channel& channel, const ListContext& context) {
  Channel unnamed = channel;
  unnamed.displayName.clear();
  return Completed(unnamed, context).displayName;
}

bool IsFilledName(const Channel& channel, const ListContext& context) {
  if (channel.displayName.empty() || channel.displayName == channel.name) return true;
  return channel.displayName == FilledName(channel, context);
}

}  // namespace zortunedex::kit::interchange

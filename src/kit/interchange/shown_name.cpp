#include "kit/interchange/shown_name.h"

#include "kit/failure.h"

namespace interchange {

WideText FilledName(const Channel& channel, const ListContext& context) {
  Channel unnamed = channel;
  unnamed.displayName.clear();
  ComPtr<IChannelInfo> record;
  Require(context.database.List(context.signal)->CreateChannelInfo(record.Receive()),
          "a record cannot be made");
  WriteChannel(unnamed, context.signal, record.Get());
  return ReadChannel(record.Get()).displayName;
}

bool IsFilledName(const Channel& channel, const ListContext& context) {
  if (channel.displayName.empty() || channel.displayName == channel.name) return true;
  return channel.displayName == FilledName(channel, context);
}

}  // namespace interchange

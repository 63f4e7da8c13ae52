// Station setters and getters with blocks of any length, and signal types that change under them.
#include "channels/chan_info.h"
#include "platform/com_ptr.h"
#include "support/fuzz.h"
#include "support/input.h"
#include "support/station_steps.h"

void Fuzz(const BYTE* data, std::size_t size) {
  Input input(data, size);
  ComPtr<IChannelInfo> channel;
  Require(CChanInfo::CreateInstance(channel.Receive()) == S_OK);
  while (!input.IsEmpty()) {
    StepStation(input, channel.Get());
    RequireSoundStation(channel.Get());
  }
}

// The values that a list of channels finds them by.
#pragma once

#include <optional>
#include <tuple>

#include "channels/chan_info.h"
#include "records/key_order.h"

struct ChannelIndex {
  static std::optional<UINT> Of(const CChanInfo& channel) { return channel.Index(); }
  static HRESULT Get(IChannelInfo* channel, UINT* index) { return channel->GetChannelIndex(index); }
  static std::optional<UINT> Ask(IChannelInfo* channel) {
    UINT index = 0;
    if (FAILED(Get(channel, &index))) return std::nullopt;
    return index;
  }
  static void Number(IChannelInfo* channel, UINT index) { channel->SetChannelIndex(index); }
  static bool Number(CChanInfo& channel, UINT index) { return channel.NumberAs(index); }
};

struct ChannelNumber {
  static std::optional<UINT> Of(const CChanInfo& channel) { return channel.Number(); }
  static std::optional<UINT> Ask(IChannelInfo* channel) {
    UINT number = 0;
    if (FAILED(channel->GetChannelNo(&number))) return std::nullopt;
    return number;
  }
};

/// What RecordList wants to know.
struct ChannelTraits {
  using Interface = IChannelInfo;
  using Own = CChanInfo;
  using Flag = BOOL;
  using Index = ChannelIndex;
  using Keys = std::tuple<KeyOrder<CChanInfo, IChannelInfo, ChannelIndex>,
                          KeyOrder<CChanInfo, IChannelInfo, ChannelNumber>>;
};

#include "kit/model/channel_table.h"

#include "kit/model/channel_list.h"

namespace zortunedex::kit {

ChannelTable ReadTable(const Location& location) {
  return {location.country, location.signal, ChannelList(location).Channels()};
}

}  // namespace zortunedex::kit

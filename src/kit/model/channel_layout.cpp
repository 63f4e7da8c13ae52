#include "kit/model/channel_layout.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/model/narrow_text.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Layout;

const Layout& LayoutOf(InputSignalType signal) {
  const Layout* layout = station_blocks::Find(signal);
  if (layout == nullptr) {
    throw Failure{E_NOTIMPL, "the file cannot hold channels of " + SignalTypeName(signal)};
  }
  return *layout;
}

Channel EmptyChannel(const Layout& layout) {
  Channel channel;
  channel.block.resize(layout.size);
  for (const Field& field : layout.satelliteParams) {
    if (tuning_words::Of(field.form).empty()) continue;
    station_blocks::Store(channel.block.data() + field.offset, field.width, UINT32_MAX);
  }
  return channel;
}

std::size_t TextLimit(const Field& field) {
  return field.width == 0 ? NarrowText::kAttributeLimit
                          : std::min<std::size_t>(field.width - 1U, NarrowText::kAttributeLimit);
}

}  // namespace zortunedex::kit

#include "xml/codecs/channel_codec.h"

#include "core/station_blocks.h"
#include "xml/codecs/channel_reader.h"
#include "xml/codecs/channel_writer.h"

namespace xml {

HRESULT CodeChannel(const dom::Element& channel, IChannelInfo* channelInfo, Direction direction) {
  if (!channel || channelInfo == nullptr) return E_POINTER;
  InputSignalType signalType = InputSignalUnknown;
  const HRESULT hr = channelInfo->GetSignalType(&signalType);
  if (FAILED(hr)) return hr;
  // Types without a block have no form in the file either: their channels live in memory alone.
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) return E_NOTIMPL;
  return direction == Direction::Read ? ReadChannel(channel, channelInfo, signalType, *layout)
                                      : WriteChannel(channel, channelInfo, *layout);
}

}  // namespace xml

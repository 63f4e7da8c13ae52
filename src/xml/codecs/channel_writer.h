#pragma once

#include "core/station_blocks.h"
#include "platform/dom.h"

namespace xml {

/// Writes a record into an element. Ends with the code of the record's getter that failed, and with
/// E_FAIL where there is no station block.
HRESULT WriteChannel(const dom::Element& channel, IChannelInfo* channelInfo,
                     const station_blocks::Layout& layout);

/// Appends the entries of a list to ElementStreams, as many as the count in the block says and the
/// block has room for. E_INVALIDARG for a count of 0, and nothing is written.
HRESULT WriteStreamList(const dom::Element& streams, const station_blocks::StreamList& list,
                        const BYTE* block);

}  // namespace xml

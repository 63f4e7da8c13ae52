#pragma once

#include "core/station_blocks.h"
#include "platform/dom.h"
#include "xml/xml_nodes.h"

namespace xml {

/// The ElementStreams child. Missing: a new, empty one is added, whatever `create` says; present
/// and `create`: replaced by a new, empty one at the end.
HRESULT GetElementStreams(const dom::Element& channel, dom::Element& streams, bool create);

/// Reads an element into a record: its index, marks and display name, and a station block of the
/// layout. The result is that of SetStationInfo.
HRESULT ReadChannel(const dom::Element& channel, IChannelInfo* channelInfo,
                    InputSignalType signalType, const station_blocks::Layout& layout);

}  // namespace xml

#pragma once

#include "core/station_blocks.h"
#include "platform/dom.h"
#include "xml/xml_nodes.h"

namespace xml {

/// The ElementStreams child. Missing: a new, empty one is added, whatever `create` says; present
/// and `create`: replaced by a new, empty one at the end.
HRESULT GetElementStreams(const dom::Element& channel, dom::Element& streams, bool create);

/// Reads an element: its index, marks and display name into a record, all else into a station with
/// a block of the layout, which the caller frees with CoTaskMemFree. Lack of memory is raised.
void ReadStation(const dom::Element& channel, IChannelInfo* channelInfo, InputSignalType signalType,
                 const station_blocks::Layout& layout, _StationTuneInfo* station);

/// Reads an element into a record, its station too. The result is that of SetStationInfo.
HRESULT ReadChannel(const dom::Element& channel, IChannelInfo* channelInfo,
                    InputSignalType signalType, const station_blocks::Layout& layout);

}  // namespace xml

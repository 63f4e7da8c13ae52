#pragma once

#include "core/interfaces.h"
#include "platform/dom.h"
#include "xml/codecs/direction.h"

namespace xml {

/// Moves one channel between its element and its record, by the record's signal type. E_NOTIMPL for
/// a type that the file has no form for (the DVB-C and ISDB types among them); the element is then
/// untouched. Writing fails with the code of the record's getter that failed, and with E_FAIL where
/// there is no station block; attributes written by then stay.
HRESULT CodeChannel(const dom::Element& channel, IChannelInfo* channelInfo, Direction direction);

}  // namespace xml

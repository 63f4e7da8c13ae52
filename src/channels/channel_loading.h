#pragma once

#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "platform/dom.h"

/// Makes a record of the signal type and reads it from an element of a file. Lack of memory is
/// raised, also where a record does not tell: its setter answers S_OK with its station zeroed, and
/// such a channel must not pass for the one in the file.
HRESULT LoadChannel(const dom::Element& element, InputSignalType signalType,
                    ComPtr<IChannelInfo>& record);

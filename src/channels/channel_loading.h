#pragma once

#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "platform/dom.h"

/// Makes a record of the signal type and reads it from an element of a file; the record takes the
/// station as it was read, without a copy. E_NOTIMPL for a type that the file has no form for. Lack
/// of memory is raised.
HRESULT LoadChannel(const dom::Element& element, InputSignalType signalType,
                    ComPtr<IChannelInfo>& record);

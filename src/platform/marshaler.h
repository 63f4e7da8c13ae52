#pragma once

#include "platform/com.h"

/// Makes the platform's free-threaded marshaler, aggregated on `controlling`. Linux has no
/// apartments and needs none: S_OK with null.
HRESULT CreateFreeThreadedMarshaler(IUnknown* controlling, IUnknown** marshaler);

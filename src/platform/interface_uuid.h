// ZORTUNEDEX_UUID(key, type, prefix, text) ties an identifier to a type, so that __uuidof names it,
// and with that IID_PPV_ARGS and smart pointers. `key` is struct or class; `text` says what the
// constant says, whose name is the prefix and the type's.
#pragma once

#ifdef _WIN32
#include "platform/windows/interface_uuid.h"
#else
#include "platform/linux/interface_uuid.h"
#endif

#pragma once

#include "platform/com.h"

/// The file that this code is part of: the library, or a test program.
HMODULE OwnModule();

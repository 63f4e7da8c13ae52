#pragma once

#include <string>

#include "platform/com.h"

/// The system's words for an error, as UTF-8 and without the full stop.
std::string SystemMessage(DWORD error);

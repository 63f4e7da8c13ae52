#pragma once

#include <functional>

#include "platform/com.h"

/// What a process that `begin` starts ends with; -1 when it cannot be started. A busy system now
/// and then refuses one; then nothing has run, and it is tried again.
int StatusOfProcess(const std::function<bool(PROCESS_INFORMATION& process)>& begin);

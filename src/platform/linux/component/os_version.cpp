#include "platform/os_version.h"

bool os::IsWindows9x() { return false; }

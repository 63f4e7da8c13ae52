#include "platform/os_version.h"

#include <windows.h>

bool os::IsWindows9x() {
  OSVERSIONINFOA version = {};
  version.dwOSVersionInfoSize = sizeof(version);
  return GetVersionExA(&version) != 0 && version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS;
}

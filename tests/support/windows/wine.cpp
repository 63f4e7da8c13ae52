#include "support/wine.h"

#include <windows.h>

bool RunsOnWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

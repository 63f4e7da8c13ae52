#include "support/windows/process.h"

#include <cstdio>

int StatusOfProcess(const std::function<bool(PROCESS_INFORMATION& process)>& begin) {
  constexpr DWORD kPause = 100;
  PROCESS_INFORMATION process{};
  for (int attempt = 1; !begin(process); ++attempt) {
    std::fprintf(stderr, "attempt %d: no process was started, error %lu\n", attempt,
                 GetLastError());
    if (attempt == 4) return -1;
    Sleep(kPause);
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(status);
}

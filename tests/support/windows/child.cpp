#include "support/windows/child.h"

#include "platform/com.h"
#include "platform/windows/module_path.h"

int StatusOfThisProgram(const std::string& command) {
  std::wstring wide(command.begin(), command.end());
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(ModulePath(nullptr).c_str(), wide.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &start, &process)) {
    return -1;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(status);
}

#include "support/windows/child.h"

#include "platform/windows/module_path.h"
#include "support/windows/process.h"

int StatusOfThisProgram(const std::string& command) {
  return StatusOfProcess([&](PROCESS_INFORMATION& process) {
    std::wstring wide(command.begin(), command.end());
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    return CreateProcessW(ModulePath(nullptr).c_str(), wide.data(), nullptr, nullptr, FALSE, 0,
                          nullptr, nullptr, &start, &process) != 0;
  });
}

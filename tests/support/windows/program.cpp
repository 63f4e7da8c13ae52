#include "support/program.h"

#include <mutex>

#include "support/windows/process.h"

namespace {

/// In quotes, as programs take their command line apart: a quote has a backslash in front of it,
/// and backslashes in front of a quote are doubled.
std::string QuotedWord(const std::string& text) {
  std::string quoted = "\"";
  std::size_t backslashes = 0;
  for (const char letter : text) {
    if (letter == '"') quoted.append(backslashes + 1, '\\');
    backslashes = letter == '\\' ? backslashes + 1 : 0;
    quoted += letter;
  }
  return quoted.append(backslashes, '\\') + "\"";
}

HANDLE Opened(const std::string& file, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  return CreateFileA(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                     disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool Begin(std::string command, const StandardFiles& files, PROCESS_INFORMATION& process) {
  // A program gets every handle that can be inherited: what one opens is not for the next one.
  static std::mutex guard;
  const std::lock_guard<std::mutex> only(guard);
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = Opened(files.in, GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = Opened(files.out, GENERIC_WRITE, CREATE_ALWAYS);
  start.hStdError = Opened(files.err, GENERIC_WRITE, CREATE_ALWAYS);
  const HANDLE handles[] = {start.hStdInput, start.hStdOutput, start.hStdError};
  bool isReady = true;
  for (const HANDLE handle : handles) isReady = isReady && handle != INVALID_HANDLE_VALUE;
  const bool hasBegun = isReady && CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE,
                                                  0, nullptr, nullptr, &start, &process) != 0;
  const DWORD error = GetLastError();
  for (const HANDLE handle : handles) {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
  SetLastError(error);
  return hasBegun;
}

}  // namespace

int StatusOfProgram(const std::string& path, const std::vector<std::string>& arguments,
                    const StandardFiles& files) {
  std::string command = QuotedWord(path);
  for (const std::string& argument : arguments) command += " " + QuotedWord(argument);
  return StatusOfProcess(
      [&](PROCESS_INFORMATION& process) { return Begin(command, files, process); });
}

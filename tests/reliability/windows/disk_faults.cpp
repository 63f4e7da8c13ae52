#include "reliability/disk_faults.h"

#include "platform/com.h"

namespace disk_faults {
namespace {

bool isOn = false;
Fault chosen = Fault::Device;
int left = 0;
int calls = 0;

DWORD ErrorOf(Fault fault) {
  switch (fault) {
    case Fault::NoSpace:
      return ERROR_DISK_FULL;
    case Fault::NoRights:
      return ERROR_ACCESS_DENIED;
    default:
      return ERROR_IO_DEVICE;
  }
}

bool Stays() {
  return chosen == Fault::NoSpace || chosen == Fault::NoRights || chosen == Fault::Device;
}

bool IsHit() {
  if (!isOn) return false;
  const int number = calls++;
  return number == left || (number > left && Stays());
}

void EndProcess() {
  if (chosen == Fault::KillBefore || chosen == Fault::KillHalf) {
    TerminateProcess(GetCurrentProcess(), kKilled);
  }
}

/// Answers `failed` for a call that is hit; `really` is the call itself.
template <typename Result, typename Call>
Result Answer(Result failed, Call really) {
  if (!IsHit() || chosen == Fault::Short) return really();
  if (chosen == Fault::KillHalf) static_cast<void>(really());
  EndProcess();
  SetLastError(ErrorOf(chosen));
  return failed;
}

}  // namespace

const bool kIsInterruptible = false;

Scope::Scope(Fault fault, int position) {
  chosen = fault;
  left = position;
  calls = 0;
  isOn = true;
}

Scope::~Scope() { isOn = false; }

int Calls() { return calls; }

}  // namespace disk_faults

using disk_faults::Answer;

// What the library calls through its import table are these pointers.
extern "C" {

extern decltype(&CreateFileW) __real___imp_CreateFileW;
extern decltype(&WriteFile) __real___imp_WriteFile;
extern decltype(&FlushFileBuffers) __real___imp_FlushFileBuffers;
extern decltype(&MoveFileExW) __real___imp_MoveFileExW;
extern decltype(&CloseHandle) __real___imp_CloseHandle;

static HANDLE WINAPI FaultyCreate(LPCWSTR path, DWORD access, DWORD share,
                                  LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                                  HANDLE form) {
  return Answer(INVALID_HANDLE_VALUE, [=] {
    return __real___imp_CreateFileW(path, access, share, security, disposition, flags, form);
  });
}

static BOOL WINAPI FaultyWrite(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                               LPOVERLAPPED overlapped) {
  using disk_faults::chosen;
  using disk_faults::Fault;
  const auto write = [=](DWORD some) {
    return __real___imp_WriteFile(file, bytes, some, written, overlapped);
  };
  if (!disk_faults::IsHit()) return write(count);
  if (chosen == Fault::Short) return write((count + 1) / 2);
  if (chosen == Fault::KillHalf) static_cast<void>(write(count / 2));
  disk_faults::EndProcess();
  SetLastError(disk_faults::ErrorOf(chosen));
  return FALSE;
}

static BOOL WINAPI FaultyFlush(HANDLE file) {
  return Answer(FALSE, [=] { return __real___imp_FlushFileBuffers(file); });
}

static BOOL WINAPI FaultyMove(LPCWSTR from, LPCWSTR to, DWORD flags) {
  return Answer(FALSE, [=] { return __real___imp_MoveFileExW(from, to, flags); });
}

// A handle whose closing reports an error is closed all the same.
static BOOL WINAPI FaultyClose(HANDLE handle) {
  using disk_faults::chosen;
  using disk_faults::Fault;
  if (!disk_faults::IsHit()) return __real___imp_CloseHandle(handle);
  if (chosen == Fault::KillBefore) disk_faults::EndProcess();
  const BOOL result = __real___imp_CloseHandle(handle);
  disk_faults::EndProcess();
  if (chosen == Fault::Short) return result;
  SetLastError(disk_faults::ErrorOf(chosen));
  return FALSE;
}

decltype(&CreateFileW) __wrap___imp_CreateFileW = FaultyCreate;
decltype(&WriteFile) __wrap___imp_WriteFile = FaultyWrite;
decltype(&FlushFileBuffers) __wrap___imp_FlushFileBuffers = FaultyFlush;
decltype(&MoveFileExW) __wrap___imp_MoveFileExW = FaultyMove;
decltype(&CloseHandle) __wrap___imp_CloseHandle = FaultyClose;

}  // extern "C"

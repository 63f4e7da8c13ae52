#include "platform/host.h"
#include "platform/windows/files/file_handle.h"
#include "platform/windows/files/system_message.h"
#include "platform/windows/files/wide_path.h"
#include "platform/windows/text/code_page.h"

namespace host {
namespace {

static_assert(sizeof(HANDLE) == sizeof(std::intptr_t));

HANDLE HandleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

}  // namespace

FileLock::FileLock(const std::string& path, std::string& cause) {
  const std::wstring target =
      wide_path::Lengthen(std::wstring(code_page::Widen(CP_UTF8, path).View()));
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  FileHandle file(target, GENERIC_READ | GENERIC_WRITE, kShareAll, OPEN_ALWAYS,
                  FILE_ATTRIBUTE_NORMAL);
  if (!file.IsOpen()) cause = SystemMessage(GetLastError());
  m_handle = reinterpret_cast<std::intptr_t>(file.Release());
}

FileLock::~FileLock() { FileHandle::Attach(HandleOf(m_handle)).Close(); }

bool FileLock::Take() {
  OVERLAPPED first{};
  constexpr DWORD kHow = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  if (LockFileEx(HandleOf(m_handle), kHow, 0, 1, 0, &first)) return true;
  const DWORD error = GetLastError();
  return error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING &&
         error != ERROR_SHARING_VIOLATION;
}

}  // namespace host

#include "platform/windows/files/temporary_file.h"

#include <aclapi.h>

#include <atomic>
#include <cstdint>
#include <cwchar>
#include <memory>

#include "platform/windows/files/wide_path.h"

namespace temporary_file {
namespace {

constexpr int kMaxTries = 1000;
constexpr wchar_t kNameForm[] = L"zt%08lx%08lx.tmp";
// In units of 100 ns; file systems round a file's time by up to two seconds.
constexpr std::uint64_t kClockSlack = 50000000;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

std::wstring NextName() {
  static std::atomic<DWORD> next{GetTickCount()};
  wchar_t name[32];
  std::swprintf(name, sizeof(name) / sizeof(name[0]), kNameForm, GetCurrentProcessId(), next++);
  return name;
}

/// The process that made a file of that name; 0 for a name that is not of that form.
DWORD MakerOf(const wchar_t* name) {
  unsigned long process = 0;
  unsigned long number = 0;
  if (std::swscanf(name, L"zt%8lx%8lx.tmp", &process, &number) != 2) return 0;
  wchar_t same[32];
  std::swprintf(same, sizeof(same) / sizeof(same[0]), kNameForm, process, number);
  return std::wcscmp(name, same) == 0 ? process : 0;
}

std::uint64_t TimeOf(const FILETIME& time) {
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

/// True when a process of that number may have made a file at that time and still lives. Numbers
/// are given out again: a process that began after the file is another one.
bool IsAlive(DWORD process, const FILETIME& made) {
  const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
  if (handle == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
  DWORD status = STILL_ACTIVE;
  FILETIME begun{};
  FILETIME unused{};
  GetExitCodeProcess(handle, &status);
  const bool isYounger = GetProcessTimes(handle, &begun, &unused, &unused, &unused) &&
                         TimeOf(begun) > TimeOf(made) + kClockSlack;
  CloseHandle(handle);
  return status == STILL_ACTIVE && !isYounger;
}

bool IsAbandoned(const WIN32_FIND_DATAW& entry) {
  constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  const DWORD process = MakerOf(entry.cFileName);
  return process != 0 && !(entry.dwFileAttributes & kNoFile) &&
         !IsAlive(process, entry.ftCreationTime);
}

/// True for a directory of this machine.
bool IsLocal(const std::wstring& directory) {
  std::wstring volume(directory.size() + MAX_PATH, L'\0');
  const std::wstring path = directory.empty() ? L".\\" : directory;
  if (!GetVolumePathNameW(path.c_str(), volume.data(), static_cast<DWORD>(volume.size()))) {
    return false;
  }
  const UINT type = GetDriveTypeW(volume.c_str());
  return type == DRIVE_FIXED || type == DRIVE_REMOVABLE || type == DRIVE_RAMDISK;
}

void KeepAccessList(const std::wstring& old, const std::wstring& fresh) {
  const FileHandle source(old, READ_CONTROL, kShareAll, OPEN_EXISTING, 0);
  const FileHandle target(fresh, READ_CONTROL | WRITE_DAC, kShareAll, OPEN_EXISTING, 0);
  if (!source.IsOpen() || !target.IsOpen()) return;
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetSecurityInfo(source.Get(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                      &list, nullptr, &descriptor) != ERROR_SUCCESS) {
    return;
  }
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  if (list != nullptr && GetSecurityDescriptorControl(descriptor, &control, &revision)) {
    // Entries inherited from the directory are the platform's to work out again.
    const DWORD inheritance = control & SE_DACL_PROTECTED
                                  ? DWORD{PROTECTED_DACL_SECURITY_INFORMATION}
                                  : DWORD{UNPROTECTED_DACL_SECURITY_INFORMATION};
    SetSecurityInfo(target.Get(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr,
                    nullptr, list, nullptr);
  }
  LocalFree(descriptor);
}

}  // namespace

FileHandle Create(const std::wstring& directory, std::wstring& name) {
  for (int i = 0; i < kMaxTries; ++i) {
    name = wide_path::Lengthen(directory + NextName());
    FileHandle file(name, GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
    if (file.IsOpen() || GetLastError() != ERROR_FILE_EXISTS) return file;
  }
  return {};
}

void RemoveAbandoned(const std::wstring& directory) {
  if (!IsLocal(directory)) return;
  WIN32_FIND_DATAW entry{};
  const HANDLE first = FindFirstFileW((directory + L"zt*.tmp").c_str(), &entry);
  if (first == INVALID_HANDLE_VALUE) return;
  // Ends also where memory does not suffice for a path.
  const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> search(first, FindClose);
  do {
    if (IsAbandoned(entry)) DeleteFileW((directory + entry.cFileName).c_str());
  } while (FindNextFileW(search.get(), &entry));
}

void KeepAccess(const std::wstring& old, const std::wstring& fresh) {
  const DWORD attributes = GetFileAttributesW(old.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return;
  KeepAccessList(old, fresh);
  SetFileAttributesW(fresh.c_str(), attributes & kKeptAttributes);
}

}  // namespace temporary_file

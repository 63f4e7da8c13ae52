#include "platform/windows/temporary_file.h"

#include <aclapi.h>

#include <atomic>
#include <cwchar>

#include "platform/windows/wide_path.h"

namespace temporary_file {
namespace {

constexpr int kMaxTries = 1000;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

std::wstring NextName() {
  static std::atomic<DWORD> next{GetTickCount()};
  wchar_t name[32];
  std::swprintf(name, sizeof(name) / sizeof(name[0]), L"zt%08lx%08lx.tmp", GetCurrentProcessId(),
                next++);
  return name;
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

void KeepAccess(const std::wstring& old, const std::wstring& fresh) {
  const DWORD attributes = GetFileAttributesW(old.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return;
  KeepAccessList(old, fresh);
  SetFileAttributesW(fresh.c_str(), attributes & kKeptAttributes);
}

}  // namespace temporary_file

#include "platform/windows/files/wide_path.h"

#include <string_view>

#include "platform/windows/files/file_handle.h"
#include "platform/windows/text/code_page.h"

namespace wide_path {
namespace {

// Room for a short name behind the longest plain directory path.
constexpr std::size_t kLongestPlain = 200;

std::wstring FullPath(const std::wstring& path) {
  std::wstring full;
  DWORD length = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  while (length > full.size()) {
    full.resize(length);
    length = GetFullPathNameW(path.c_str(), length, full.data(), nullptr);
  }
  full.resize(length);
  return full;
}

bool StartsWith(std::wstring_view path, std::wstring_view start) {
  return path.substr(0, start.size()) == start;
}

}  // namespace

std::wstring From(const std::string& path) {
  // Paths end at their first zero byte, as they do for every narrow call.
  const Bstr wide = code_page::Widen(CP_ACP, path.c_str());
  return Lengthen(std::wstring(wide.View()));
}

std::wstring Lengthen(const std::wstring& path) {
  if (path.size() <= kLongestPlain || StartsWith(path, L"\\\\?\\") ||
      StartsWith(path, L"\\\\.\\")) {
    return path;
  }
  const std::wstring full = FullPath(path);
  if (full.empty()) return path;
  if (StartsWith(full, L"\\\\?\\") || StartsWith(full, L"\\\\.\\")) return full;
  if (StartsWith(full, L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
  return L"\\\\?\\" + full;
}

std::wstring Resolve(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) {
    return path;
  }
  const FileHandle file(path, FILE_READ_ATTRIBUTES,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING,
                        FILE_FLAG_BACKUP_SEMANTICS);
  if (!file.IsOpen()) return path;
  std::wstring final;
  DWORD length = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
  while (length > final.size()) {
    final.resize(length);
    length = GetFinalPathNameByHandleW(file.Get(), final.data(), length, FILE_NAME_NORMALIZED);
  }
  final.resize(length);
  return final.empty() ? path : final;
}

std::wstring DirectoryOf(const std::wstring& path) {
  const std::size_t end = path.find_last_of(L"\\/:");
  return end == std::wstring::npos ? std::wstring() : path.substr(0, end + 1);
}

}  // namespace wide_path

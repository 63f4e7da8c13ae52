#include "platform/files.h"

#include <vector>

#include "platform/text.h"
#include "platform/windows/files/file_handle.h"
#include "platform/windows/files/temporary_file.h"
#include "platform/windows/files/wide_path.h"

namespace files {
namespace {

constexpr std::size_t kCopyBlock = std::size_t{64} * 1024;

bool CopyBytes(const FileHandle& from, const FileHandle& to) {
  std::vector<char> block(kCopyBlock);
  std::size_t count = 0;
  while (from.Read(block.data(), block.size(), count)) {
    if (count == 0) return FlushFileBuffers(to.Get()) != 0;
    if (!to.Write({block.data(), count})) return false;
  }
  return false;
}

/// Moves the copy to the first free name beside the path.
bool MoveBeside(const std::wstring& copy, const std::wstring& path) {
  for (unsigned number = 1;; ++number) {
    std::wstring name = path + L".unreadable";
    if (number > 1) name += L"." + std::to_wstring(number);
    name = wide_path::Lengthen(name);
    if (GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES) continue;
    if (MoveFileExW(copy.c_str(), name.c_str(), MOVEFILE_WRITE_THROUGH)) return true;
    const DWORD error = GetLastError();
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) return false;
  }
}

}  // namespace

const OLECHAR kSeparator = L'\\';

std::string PathFromWide(WideView path) { return text::ToNarrow(path); }

bool Exists(const std::string& path) {
  return GetFileAttributesW(wide_path::From(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::uint64_t Size(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(wide_path::From(path).c_str(), GetFileExInfoStandard, &data)) return 0;
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return 0;
  return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

bool KeepUnreadable(const std::string& path) {
  const std::wstring name = wide_path::From(path);
  const FileHandle source(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, 0);
  if (!source.IsOpen()) return false;
  std::wstring copy;
  FileHandle target = temporary_file::Create(wide_path::DirectoryOf(name), copy);
  if (!target.IsOpen()) return false;
  bool isKept = CopyBytes(source, target);
  isKept = target.Close() && isKept;
  if (isKept) temporary_file::KeepAccess(name, copy);
  isKept = isKept && MoveBeside(copy, name);
  if (!isKept) DeleteFileW(copy.c_str());
  return isKept;
}

}  // namespace files

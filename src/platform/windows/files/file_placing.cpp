#include "platform/windows/files/file_placing.h"

#include "platform/windows/files/in_use.h"
#include "platform/windows/files/temporary_file.h"

namespace placing {

bool IsReplaceable(const std::wstring& target) {
  const DWORD attributes = GetFileAttributesW(target.c_str());
  return attributes == INVALID_FILE_ATTRIBUTES ||
         !(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY));
}

bool PutInPlace(FileHandle file, const std::wstring& temporary, const std::wstring& target,
                Existing existing) {
  if (!FlushFileBuffers(file.Get()) || !file.Close()) return false;
  DWORD flags = MOVEFILE_WRITE_THROUGH;
  if (existing == Existing::Replace) {
    temporary_file::KeepAccess(target, temporary);
    flags |= MOVEFILE_REPLACE_EXISTING;
  }
  return in_use::Retry(
      [&] { return MoveFileExW(temporary.c_str(), target.c_str(), flags) != FALSE; });
}

}  // namespace placing

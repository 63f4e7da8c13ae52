#include "platform/host.h"
#include "platform/windows/files/file_placing.h"
#include "platform/windows/files/in_use.h"
#include "platform/windows/files/system_message.h"
#include "platform/windows/files/temporary_file.h"
#include "platform/windows/files/wide_path.h"
#include "platform/windows/text/code_page.h"

namespace host {
namespace {

/// Says why the last call failed; to be asked before anything is cleaned up.
bool Told(bool isDone, std::string& cause) {
  if (!isDone) cause = SystemMessage(GetLastError());
  return isDone;
}

bool WriteTo(const std::wstring& target, std::string_view bytes, placing::Existing existing,
             std::string& cause) {
  const std::wstring directory = wide_path::DirectoryOf(target);
  temporary_file::RemoveAbandoned(directory);
  std::wstring temporary;
  FileHandle file = temporary_file::Create(directory, temporary);
  if (!Told(file.IsOpen(), cause)) return false;
  const bool isWritten =
      Told(file.Write(bytes) && placing::PutInPlace(std::move(file), temporary, target, existing),
           cause);
  file.Close();
  if (!isWritten) DeleteFileW(temporary.c_str());
  return isWritten;
}

std::wstring PathOf(const std::string& utf8) {
  return wide_path::Lengthen(std::wstring(code_page::Widen(CP_UTF8, utf8).View()));
}

/// True where the file at the path is written with these letters.
bool HasName(const std::wstring& path) {
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  return path.ends_with(found.cFileName);
}

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& cause) {
  const std::wstring target = wide_path::Resolve(PathOf(path));
  if (target.empty() || !placing::IsReplaceable(target)) {
    cause = SystemMessage(target.empty() ? ERROR_INVALID_NAME : ERROR_ACCESS_DENIED);
    return false;
  }
  return WriteTo(target, bytes, placing::Existing::Replace, cause);
}

bool ReplaceFile(const std::string& path, std::string_view bytes) {
  std::string cause;
  return ReplaceFile(path, bytes, cause);
}

bool WriteNewFile(const std::string& path, std::string_view bytes, std::string& cause) {
  const std::wstring target = PathOf(path);
  if (target.empty()) {
    cause = SystemMessage(ERROR_INVALID_NAME);
    return false;
  }
  return WriteTo(target, bytes, placing::Existing::Keep, cause);
}

bool WriteNewFile(const std::string& path, std::string_view bytes) {
  std::string cause;
  return WriteNewFile(path, bytes, cause);
}

bool RemoveFile(const std::string& path, std::string& cause) {
  const std::wstring target = PathOf(path);
  const auto remove = [&] {
    return DeleteFileW(target.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND ||
           GetLastError() == ERROR_PATH_NOT_FOUND;
  };
  return Told(in_use::Retry(remove), cause);
}

bool RenameFile(const std::string& from, const std::string& to, std::string& cause) {
  const std::wstring source = PathOf(from);
  const std::wstring target = PathOf(to);
  const auto move = [](const std::wstring& before, const std::wstring& after) {
    return in_use::Retry([&] {
      return MoveFileExW(before.c_str(), after.c_str(), MOVEFILE_WRITE_THROUGH) != FALSE;
    });
  };
  if (!Told(move(source, target), cause)) return false;
  if (HasName(target)) return true;
  // Some systems leave a name whose letters alone change.
  const std::wstring between = PathOf(to + kBeingRenamed);
  if (!Told(move(source, between), cause)) return false;
  const bool isMoved = Told(move(between, target), cause);
  if (!isMoved) move(between, source);
  return isMoved;
}

bool MakeFolder(const std::string& path, std::string& cause) {
  const std::wstring target = PathOf(path);
  return Told(IsFolder(target) || CreateDirectoryW(target.c_str(), nullptr) || IsFolder(target),
              cause);
}

}  // namespace host

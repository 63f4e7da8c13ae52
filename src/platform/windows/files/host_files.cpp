#include "platform/host.h"
#include "platform/windows/files/file_placing.h"
#include "platform/windows/files/temporary_file.h"
#include "platform/windows/files/wide_path.h"
#include "platform/windows/text/code_page.h"

namespace host {
namespace {

bool WriteTo(const std::wstring& target, std::string_view bytes, placing::Existing existing) {
  const std::wstring directory = wide_path::DirectoryOf(target);
  temporary_file::RemoveAbandoned(directory);
  std::wstring temporary;
  FileHandle file = temporary_file::Create(directory, temporary);
  if (!file.IsOpen()) return false;
  const bool isWritten =
      file.Write(bytes) && placing::PutInPlace(std::move(file), temporary, target, existing);
  file.Close();
  if (!isWritten) DeleteFileW(temporary.c_str());
  return isWritten;
}

std::wstring PathOf(const std::string& utf8) {
  return wide_path::Lengthen(std::wstring(code_page::Widen(CP_UTF8, utf8).View()));
}

}  // namespace

bool ReplaceFile(const std::string& path, std::string_view bytes) {
  const std::wstring target = wide_path::Resolve(PathOf(path));
  return !target.empty() && placing::IsReplaceable(target) &&
         WriteTo(target, bytes, placing::Existing::Replace);
}

bool WriteNewFile(const std::string& path, std::string_view bytes) {
  const std::wstring target = PathOf(path);
  return !target.empty() && WriteTo(target, bytes, placing::Existing::Keep);
}

}  // namespace host

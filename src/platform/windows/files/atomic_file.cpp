#include "platform/files.h"
#include "platform/text.h"
#include "platform/windows/files/file_handle.h"
#include "platform/windows/files/file_placing.h"
#include "platform/windows/files/temporary_file.h"
#include "platform/windows/files/wide_path.h"

namespace files {
namespace {

static_assert(sizeof(HANDLE) == sizeof(std::intptr_t));

HANDLE HandleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::wstring TargetOf(const std::string& path) { return wide_path::Resolve(wide_path::From(path)); }

// Not shared for writing: nobody else writes the file at the same time.
FileHandle OpenWritten(const std::string& temporary) {
  return FileHandle(wide_path::From(temporary), GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING, 0);
}

}  // namespace

AtomicFile::AtomicFile(const std::string& path) : m_target(path), m_failed(true) {
  const std::wstring target = TargetOf(path);
  if (target.empty() || !placing::IsReplaceable(target)) return;
  const std::wstring directory = wide_path::DirectoryOf(target);
  temporary_file::RemoveAbandoned(directory);
  std::wstring name;
  FileHandle file = temporary_file::Create(directory, name);
  if (!file.IsOpen()) return;
  file.Close();
  m_temporary = text::ToNarrow(name);
  // The handle is opened again by the first use: until then the file is free for another writer.
  m_failed = wide_path::From(m_temporary) != name;
  if (!m_failed) return;
  // A directory behind a link whose name the code page cannot say.
  DeleteFileW(name.c_str());
  m_temporary.clear();
}

AtomicFile::~AtomicFile() {
  FileHandle::Attach(HandleOf(m_handle)).Close();
  if (!m_temporary.empty()) DeleteFileW(wide_path::From(m_temporary).c_str());
}

bool AtomicFile::IsOpen() const { return !m_temporary.empty(); }

bool AtomicFile::Write(std::string_view bytes) {
  if (m_failed) return false;
  FileHandle file = FileHandle::Attach(HandleOf(m_handle));
  if (!file.IsOpen()) file = OpenWritten(m_temporary);
  m_failed = !file.IsOpen() || !file.Write(bytes);
  m_handle = reinterpret_cast<std::intptr_t>(file.Release());
  return !m_failed;
}

bool AtomicFile::Commit() {
  FileHandle file = FileHandle::Attach(HandleOf(std::exchange(m_handle, -1)));
  if (m_failed) return false;
  m_failed = true;
  if (!file.IsOpen()) file = OpenWritten(m_temporary);
  if (!file.IsOpen()) return false;
  const bool isMoved = placing::PutInPlace(std::move(file), wide_path::From(m_temporary),
                                           TargetOf(m_target), placing::Existing::Replace);
  if (isMoved) m_temporary.clear();
  return isMoved;
}

}  // namespace files

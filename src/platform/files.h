// The few things that the system asks of the file system. Paths are narrow text: the ANSI code page
// on Windows, UTF-8 on Linux. They have no length limit here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace files {

/// What separates directories: a backslash on Windows, a slash on Linux.
extern const OLECHAR kSeparator;

/// A path given as wide text in the form that the functions below take.
std::string PathFromWide(WideView path);

/// True when something (a file or a directory) stands at the path.
bool Exists(const std::string& path);

/// Size of the regular file at the path; 0 when there is none or it cannot be asked.
std::uint64_t Size(const std::string& path);

/// Copies the file at `path` to its name plus ".unreadable" (".unreadable.2", ".3", ... when
/// taken), durably. False when that did not work; then nothing is left behind.
bool KeepUnreadable(const std::string& path);

/// Replaces a file as a whole or not at all: what is written goes to a temporary file beside the
/// target, `Commit` makes it durable and puts it in the target's place. Without a successful
/// `Commit` the target stays as it was and the temporary file goes. A symbolic link is followed,
/// the old file's mode and (where allowed) owner are kept. What a killed process left of this is
/// removed by the next save in the same directory.
class AtomicFile {
 public:
  explicit AtomicFile(const std::string& path);
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  ~AtomicFile();

  /// False when the temporary file could not be made: a missing or read-only directory, or a
  /// directory, a device or a write-protected file in the target's place.
  bool IsOpen() const;
  /// False after the first failure; later calls then do nothing.
  bool Write(std::string_view bytes);
  /// False when anything failed since the file was opened.
  bool Commit();

  /// Where the bytes go until `Commit`: for writers that want a path and not bytes. They open,
  /// write and close the file themselves before `Commit` is called.
  const std::string& TemporaryPath() const { return m_temporary; }

 private:
  std::string m_target;
  std::string m_temporary;
  std::string m_buffer;  ///< written bytes that wait for more of them
  std::intptr_t m_handle = -1;
  bool m_failed = false;
};

}  // namespace files

// What a host program needs from its platform beside the library: finding the module, arguments and
// output as UTF-8, files that are written durably. The library itself does not contain it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/com.h"

// Headers of the platform have it as a macro.
#undef ReplaceFile

namespace host {

/// Arguments of this process as UTF-8, the program's name first.
std::vector<std::string> Arguments(int argc, char** argv);

/// Makes standard output and error take UTF-8 unchanged, and prepares COM for this thread.
void Prepare();

/// A variable of the environment (its name is ASCII) as UTF-8; nothing where it is not set.
std::optional<std::string> Environment(const char* name);

/// True when standard input is a terminal, at which a question can be answered.
bool InputIsTerminal();

/// Columns of the terminal that standard output is; nothing when it is none, or does not tell.
std::optional<std::size_t> OutputWidth();

/// Memory that nothing was put into yet, and that all of it will be: a system that gives it page by
/// page is asked for large ones. What it answers changes the time that takes, and nothing else.
void PreferLargePages(void* memory, std::size_t size);

/// The library's own entry points. The library is loaded at first use.
HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
HRESULT CanUnloadNow();
HRESULT RegisterServer();
HRESULT UnregisterServer();

/// ZorTunedexSetCodePage where the library has it, else E_NOTIMPL (Windows has a code page
/// already).
HRESULT SetCodePage(UINT codePage);
/// ZorTunedexSetRegistryFile where the library has it, else E_NOTIMPL (Windows has a registry).
HRESULT SetRegistryFile(const char* path);

/// Replaces the file at a path (UTF-8) as a whole or not at all: what the library does when it
/// saves. The bytes go to a temporary file beside it, which is made durable and put in its place.
/// A symbolic link is followed, the old file's mode and, where allowed, its owner are kept. False
/// when that failed; the old file is then still there, whole, unless the very last step, making the
/// change of the directory durable, met a device error. `cause` then is the system's own words.
bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& cause);
bool ReplaceFile(const std::string& path, std::string_view bytes);

/// The same for a path where nothing stands yet. False also when something does, whenever it came.
bool WriteNewFile(const std::string& path, std::string_view bytes, std::string& cause);
bool WriteNewFile(const std::string& path, std::string_view bytes);

/// Removes a file, durably. True also where none stands.
bool RemoveFile(const std::string& path, std::string& cause);

/// What stands behind a name while its letters change on systems that do not change them in one
/// step.
inline constexpr char kBeingRenamed[] = ".renamed";

/// Gives a file another name in its directory, durably. False, and nothing is changed, also where
/// something else has that name. It is one step, unless letters of either case are the same there,
/// the name becomes itself in other letters, and the system leaves it then: a process that ends in
/// between leaves the file under the new name with kBeingRenamed behind it.
bool RenameFile(const std::string& from, const std::string& to, std::string& cause);

/// Makes a folder whose parent is there, durably, with the parent's rights as far as this process
/// gives any. True also where one stands already.
bool MakeFolder(const std::string& path, std::string& cause);

/// The lock of a file, between processes and between objects of one. The system takes it back when
/// the process ends, however it ends; the file stays. Where the file system has no locks, everybody
/// gets it.
class FileLock {
 public:
  /// Opens the file, and makes it where there is none. Not open when that failed: `cause` tells
  /// why.
  FileLock(const std::string& path, std::string& cause);
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock();

  bool IsOpen() const { return m_handle != kNone; }
  /// Takes the lock of an open file when nobody else has it. Does not wait.
  bool Take();

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t m_handle = kNone;
};

/// What keeps a file from being read.
struct Damage {
  std::string cause;    ///< why its bytes cannot be had; empty when they can, and are no document
  unsigned line = 0;    ///< of the document's fault, from 1; 0 where the parser does not tell
  unsigned column = 0;  ///< in characters, from 1
};

/// Reads a file (its path is UTF-8) as the library reads its own, with the same parser, options and
/// limits. Nothing when that works, and where nothing stands at the path. Raises std::bad_alloc.
std::optional<Damage> CheckFile(const std::string& path);

/// Why a file of so many bytes cannot be put at a path (UTF-8), found by trying everything but the
/// replacing; empty when nothing hinders it. Raises std::bad_alloc.
std::string WhyNotWritten(const std::string& path, std::size_t size);

}  // namespace host

#include "platform/linux/files/temporary_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

namespace temporary_file {
namespace {

constexpr std::string_view kPrefix = ".tunedex-";
constexpr std::size_t kDigits = 16;
constexpr int kMostTries = 100;

/// A name that nobody can have put in the way; empty without random numbers. It does not grow with
/// the target's name, which may be as long as names can be.
std::string NewName() {
  std::uint64_t number = 0;
  if (getrandom(&number, sizeof(number), 0) != sizeof(number)) return {};
  char digits[kDigits + 1];
  std::snprintf(digits, sizeof(digits), "%016jx", static_cast<std::uintmax_t>(number));
  return std::string(kPrefix) + digits;
}

bool IsName(std::string_view name) {
  return name.starts_with(kPrefix) && name.size() == kPrefix.size() + kDigits &&
         name.find_first_not_of("0123456789abcdef", kPrefix.size()) == name.npos;
}

/// False when somebody who removes abandoned files came first: the file has no name any more, or is
/// about to lose it. File systems without locks keep every file.
bool Claim(int handle) {
  if (flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  struct stat state {};
  return fstat(handle, &state) != 0 || state.st_nlink != 0;
}

/// The lock is held until the name is gone: who has just made the file and still waits for its lock
/// finds out in `Claim`.
void RemoveIfAbandoned(int directory, const char* name) {
  // Not blocking: what has such a name need not be a file.
  const FileDescriptor file(
      openat(directory, name, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat state {};
  if (!file.IsOpen() || fstat(file.Get(), &state) != 0 || !S_ISREG(state.st_mode)) return;
  // A name is never used twice, so it cannot have become another file's since it was opened.
  if (flock(file.Get(), LOCK_EX | LOCK_NB) == 0) unlinkat(directory, name, 0);
}

}  // namespace

FileDescriptor Create(const std::string& directory, unsigned mode, std::string& path) {
  for (int count = 0; count < kMostTries; ++count) {
    const std::string name = NewName();
    if (name.empty()) return {};
    path = directory;
    path.append("/").append(name);
    FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.IsOpen() || Claim(file.Get())) return file;
  }
  return {};
}

void RemoveAbandoned(const std::string& directory) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(directory.c_str()), closedir);
  if (!entries) return;
  const int handle = dirfd(entries.get());
  while (const dirent* entry = readdir(entries.get())) {
    if (IsName(entry->d_name)) RemoveIfAbandoned(handle, entry->d_name);
  }
}

}  // namespace temporary_file

#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

#include "platform/linux/files/file_copy.h"
#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/files/temporary_file.h"
#include "platform/text.h"

namespace files {
namespace {

constexpr std::size_t kCopyBlock = std::size_t{64} * 1024;

bool CopyBytes(int from, int to, std::vector<char>& block) {
  ssize_t count = 0;
  while ((count = ReadSome(from, block.data(), block.size())) > 0) {
    if (!WriteAll(to, {block.data(), static_cast<std::size_t>(count)})) return false;
  }
  return count == 0;
}

/// Gives a finished copy the first free name beside the path.
bool PlaceCopy(const std::string& temporary, const std::string& path, std::string& copy) {
  for (unsigned number = 1;; ++number) {
    copy = path + ".unreadable";
    if (number > 1) copy += "." + std::to_string(number);
    if (MoveToFree(temporary, copy)) return true;
    if (errno != EEXIST) return false;
  }
}

}  // namespace

const OLECHAR kSeparator = u'/';

std::string PathFromWide(WideView path) { return text::ToUtf8(path); }

bool Exists(const std::string& path) {
  struct stat found {};
  return stat(path.c_str(), &found) == 0;
}

std::uint64_t Size(const std::string& path) {
  struct stat found {};
  if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return 0;
  return static_cast<std::uint64_t>(found.st_size);
}

bool KeepUnreadable(const std::string& path) {
  // Not blocking: a pipe in the file's place would wait for its writer.
  const FileDescriptor source(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat old {};
  if (!source.IsOpen() || fstat(source.Get(), &old) != 0 || !S_ISREG(old.st_mode)) return false;
  const std::string directory = DirectoryOf(path);
  std::vector<char> block(kCopyBlock);
  std::string temporary;
  FileDescriptor target = temporary_file::Create(directory, 0600, temporary);
  if (!target.IsOpen()) return false;
  const Removal ofTemporary{temporary};
  KeepOwnerAndMode(target.Get(), old);
  if (!CopyBytes(source.Get(), target.Get(), block) || fsync(target.Get()) != 0) return false;
  std::string copy;
  if (!PlaceCopy(temporary, path, copy)) return false;
  const bool isKept = target.Close() && SyncDirectory(directory);
  if (!isKept) unlink(copy.c_str());
  return isKept;
}

}  // namespace files

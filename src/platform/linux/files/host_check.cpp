#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/host.h"
#include "platform/linux/markup/parser.h"

namespace host {
namespace {

/// Why what stands in the place of a file is none; empty for files.
std::string OtherThanFile(const struct stat& state) {
  if (S_ISDIR(state.st_mode)) return "it is a folder";
  return S_ISREG(state.st_mode) ? std::string() : "it is no regular file";
}

/// Why the bytes of a file cannot be had.
std::string WhyNotRead(const std::string& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0) return std::generic_category().message(errno);
  std::string other = OtherThanFile(state);
  if (!other.empty()) return other;
  if (access(path.c_str(), R_OK) != 0) return std::generic_category().message(errno);
  return "its bytes cannot be had";
}

}  // namespace

std::optional<Damage> CheckFile(const std::string& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0 && errno == ENOENT) return std::nullopt;
  domtree::FileBytes file;
  if (!file.Read(path)) return Damage{WhyNotRead(path)};
  domtree::Place place;
  if (domtree::Parse(std::move(file), &place)) return std::nullopt;
  return Damage{{}, place.line, place.column};
}

std::string WhyNotWritten(const std::string& path, std::size_t size) {
  struct stat state {};
  if (stat(path.c_str(), &state) == 0) {
    std::string other = OtherThanFile(state);
    if (!other.empty()) return other;
  }
  // Less than this would wait for more before it is written.
  constexpr std::size_t kLeast = std::size_t{1024} * 1024;
  const std::string bytes(std::max(size, kLeast), ' ');
  errno = 0;
  files::AtomicFile file(path);
  if (file.IsOpen() && file.Write(bytes)) return {};
  return std::generic_category().message(errno);
}

}  // namespace host

#include "kit/files/whole_file.h"

#include <fstream>

#include "kit/failure.h"
#include "platform/host.h"

namespace zortunedex::kit::whole_file {
namespace {

/// What is read at once: it stays in the processor's cache.
constexpr std::size_t kPart = std::size_t{128} * 1024;

/// Raises a Failure with the cause, found by trying, where the file does not hold the bytes.
void RequireWritten(bool written, const std::string& path, std::string_view bytes) {
  if (written && Holds(PathOf(path), bytes)) return;
  const std::string cause = host::WhyNotWritten(path, bytes.size());
  throw Failure{E_FAIL, path + " could not be written" + (cause.empty() ? "" : ": " + cause)};
}

}  // namespace

std::filesystem::path PathOf(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::optional<std::string> Read(const std::filesystem::path& path) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  const std::streamoff size = file.tellg();
  if (!file || size < 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(size));
  host::PreferLargePages(bytes.data(), bytes.capacity());
  bytes.resize(static_cast<std::size_t>(size));
  file.seekg(0).read(bytes.data(), size);
  if (!file) return std::nullopt;
  return bytes;
}

bool ReadParts(const std::filesystem::path& path,
               const std::function<bool(std::string_view part)>& take) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return false;
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  std::string part(kPart, '\0');
  while (file) {
    file.read(part.data(), static_cast<std::streamsize>(part.size()));
    const auto size = static_cast<std::size_t>(file.gcount());
    if (size != 0 && !take(std::string_view(part).substr(0, size))) return true;
  }
  return !file.bad();
}

bool Holds(const std::filesystem::path& path, std::string_view bytes) {
  bool isSame = true;
  const bool isRead = ReadParts(path, [&](std::string_view part) {
    isSame = bytes.starts_with(part);
    if (isSame) bytes.remove_prefix(part.size());
    return isSame;
  });
  return isRead && isSame && bytes.empty();
}

void Replace(const std::string& path, std::string_view bytes) {
  RequireWritten(host::ReplaceFile(path, bytes), path, bytes);
}

void WriteNew(const std::string& path, std::string_view bytes) {
  RequireWritten(host::WriteNewFile(path, bytes), path, bytes);
}

}  // namespace zortunedex::kit::whole_file

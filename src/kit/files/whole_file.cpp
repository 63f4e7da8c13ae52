#include "kit/files/whole_file.h"

#include <fstream>

#include "kit/failure.h"
#include "platform/host.h"

namespace whole_file {
namespace {

void RequireWritten(bool written, const std::string& path, std::string_view bytes) {
  if (!written || Read(PathOf(path)) != bytes) {
    throw Failure{E_FAIL, path + " could not be written"};
  }
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
  std::string bytes(static_cast<std::size_t>(size), '\0');
  file.seekg(0).read(bytes.data(), size);
  if (!file) return std::nullopt;
  return bytes;
}

void Replace(const std::string& path, std::string_view bytes) {
  RequireWritten(host::ReplaceFile(path, bytes), path, bytes);
}

void WriteNew(const std::string& path, std::string_view bytes) {
  RequireWritten(host::WriteNewFile(path, bytes), path, bytes);
}

}  // namespace whole_file

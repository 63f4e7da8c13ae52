#include "kit/files/output_file.h"

#include <chrono>
#include <filesystem>
#include <fstream>

#include "kit/model/failure.h"

namespace fs = std::filesystem;

namespace {

fs::path PathOf(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

/// A file beside the target that goes unless it was put in the target's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target) : m_path(target) {
    const auto stamp = std::chrono::system_clock::now().time_since_epoch().count();
    m_path += ".tmp-" + std::to_string(stamp);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    fs::remove(m_path, ignored);
  }

  bool Write(std::string_view bytes) const {
    std::ofstream file(m_path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
  }

  /// Without `force` a file that has come to stand there meanwhile stays where hard links exist.
  bool MoveTo(const fs::path& target, bool force) const {
    std::error_code error;
    if (!force) {
      fs::create_hard_link(m_path, target, error);
      if (!error) return true;
      if (fs::exists(target)) return false;
    }
    fs::rename(m_path, target, error);
    return !error;
  }

 private:
  fs::path m_path;
};

bool Holds(const fs::path& path, std::string_view bytes) {
  std::ifstream file(path, std::ios::binary);
  const std::string found{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return found == bytes;
}

}  // namespace

void RequireFree(const std::string& path, bool force) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(PathOf(path), error);
  if (!fs::exists(status)) return;
  if (!force) throw Failure{E_FAIL, path + " is there already; --force replaces it"};
  if (fs::is_directory(fs::status(PathOf(path), error))) {
    throw Failure{E_INVALIDARG, path + " is a folder"};
  }
}

void WriteWhole(const std::string& path, std::string_view bytes, bool force) {
  RequireFree(path, force);
  fs::path target = PathOf(path);
  std::error_code error;
  // What a link points to is replaced, not the link.
  if (fs::is_symlink(target, error)) target = fs::weakly_canonical(target, error);
  const TemporaryFile temporary(target);
  if (!temporary.Write(bytes) || !temporary.MoveTo(target, force) || !Holds(target, bytes)) {
    throw Failure{E_FAIL, path + " could not be written"};
  }
}

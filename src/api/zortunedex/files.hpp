// Files of a data directory, and places where changes are tried.
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>

#include "api/zortunedex/error.hpp"
#include "api/zortunedex/text.hpp"

namespace zortunedex::detail {

namespace fs = std::filesystem;

inline constexpr char kChannelFile[] = "ChanInfo.xml";
inline constexpr char kCatalogueFile[] = "SatelliteInfo.xml";
inline constexpr char kSettingsFile[] = "UserSettings.xml";
inline constexpr char kPresetFile[] = "PreSetChannelInfo.xml";

/// A path as UTF-8, for messages.
inline std::string Shown(const fs::path& path) {
  try {
    return ToUtf8(path.string<OLECHAR>());
  } catch (const std::exception&) {  // it is no text
    return "(a path that is not UTF-8)";
  }
}

/// The bytes of a file; nothing where none stands. Raises an error where they cannot be had.
inline std::optional<std::string> ReadBytes(const fs::path& path) {
  std::error_code failure;
  const fs::file_status status = fs::status(path, failure);
  if (status.type() == fs::file_type::not_found) return std::nullopt;
  if (!fs::is_regular_file(status)) {
    throw error(E_FAIL, "read", Shown(path), failure ? failure.message() : "it is no file");
  }
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file) throw error(E_ACCESSDENIED, "read", Shown(path), "its bytes cannot be had");
  return bytes;
}

/// A directory of its own among the temporary ones, which goes with the object.
class Scratch {
 public:
  Scratch() {
    std::error_code failure;
    const fs::path base = fs::temp_directory_path(failure);
    const auto stamp = std::chrono::system_clock::now().time_since_epoch().count();
    for (int attempt = 0; !failure && attempt < 100; ++attempt) {
      fs::path path = base / ("tunedex-" + std::to_string(stamp) + '-' + std::to_string(attempt));
      if (!fs::create_directory(path, failure)) continue;
      // Copies of files that are nobody else's come to stand there.
      fs::permissions(path, fs::perms::owner_all, failure);
      m_path = std::move(path);
      return;
    }
    throw error(E_FAIL, "make a temporary directory in", Shown(base),
                failure ? failure.message() : "every name is taken");
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }

  const fs::path& Path() const { return m_path; }
  /// Puts a copy there, of nothing where there is none.
  void Copy(const char* name, const std::optional<std::string>& bytes) const {
    if (!bytes) return;
    std::ofstream file(m_path / name, std::ios::binary);
    file.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    if (!file.flush()) throw error(E_FAIL, "copy", name, "the temporary directory takes no more");
  }

 private:
  fs::path m_path;
};

}  // namespace zortunedex::detail

#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/// A directory of its own that goes with the object.
class TempDir {
 public:
  TempDir() {
    static std::atomic<unsigned> next{0};
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    const std::filesystem::path base = std::filesystem::temp_directory_path();
    do {
      m_path = base / ("zortunedex-" + std::to_string(stamp) + "-" + std::to_string(next++));
    } while (!std::filesystem::create_directory(m_path));
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  std::string Path() const { return m_path.string(); }
  /// Path of a file inside, in the form the platform's files take.
  std::string File(const std::string& name) const { return (m_path / name).string(); }

  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream file(m_path / name, std::ios::binary);
    file << bytes;
    if (!file.flush()) throw std::runtime_error("cannot write " + name);
  }
  /// The whole file; empty when there is none.
  std::string Read(const std::string& name) const {
    std::ifstream file(m_path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  bool Has(const std::string& name) const { return std::filesystem::exists(m_path / name); }
  /// How many entries the directory has.
  std::size_t Count() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
      count += !entry.path().empty();
    return count;
  }

 private:
  std::filesystem::path m_path;
};

#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/interfaces.h"

namespace bench {

/// A directory that goes with its owner.
class TempDirectory {
 public:
  TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;
  ~TempDirectory();

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

/// Writes a whole file; ends the program where there is no space for it.
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

/// The files of one number of channels, in a temporary directory of their own that goes with the
/// program.
class Workspace {
 public:
  /// Made at first use and kept.
  static const Workspace& Of(UINT count);
  /// Without owning: a directory that another process made.
  Workspace(std::filesystem::path directory, UINT count);
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  UINT Count() const { return m_count; }
  const std::filesystem::path& Directory() const { return m_directory; }
  /// Holds ChanInfo.xml with all channels, to be read only.
  std::filesystem::path Source() const { return m_directory / "source"; }
  std::filesystem::path SourceFile() const { return Source() / "ChanInfo.xml"; }
  /// To be written to.
  std::filesystem::path Target() const { return m_directory / "target"; }
  std::filesystem::path TargetFile() const { return Target() / "ChanInfo.xml"; }
  /// The same channels as libdvbv5 writes them, and a file for it to write.
  std::filesystem::path DvbSourceFile() const { return m_directory / "source.conf"; }
  std::filesystem::path DvbTargetFile() const { return m_directory / "target.conf"; }

 private:
  explicit Workspace(UINT count);

  std::optional<TempDirectory> m_owned;
  std::filesystem::path m_directory;
  UINT m_count;
};

/// A whole file.
std::string ReadFile(const std::filesystem::path& path);

}  // namespace bench

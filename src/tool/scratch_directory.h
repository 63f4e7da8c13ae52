#pragma once

#include <filesystem>
#include <string>

#include "core/interfaces.h"

/// A temporary data directory whose ChanInfo.xml holds one FM channel of a country: what the
/// library writes for that country can be read there.
class ScratchDirectory {
 public:
  /// Raises a Failure when it cannot be made.
  explicit ScratchDirectory(DWORD country);
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory();

  /// UTF-8.
  std::string Path() const;

 private:
  explicit ScratchDirectory(std::filesystem::path path);

  std::filesystem::path m_path;
};

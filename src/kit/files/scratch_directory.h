#pragma once

#include <filesystem>
#include <string>

#include "core/interfaces.h"

namespace zortunedex::kit {

/// A temporary data directory. Raises a Failure when it cannot be made.
class ScratchDirectory {
 public:
  /// Empty.
  ScratchDirectory();
  /// With a ChanInfo.xml that holds one FM channel of a country: what the library writes for that
  /// country can be read there.
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

}  // namespace zortunedex::kit

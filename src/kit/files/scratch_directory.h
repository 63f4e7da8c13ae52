#pragma once

#include <string>

#include "api/zortunedex/files.hpp"

namespace zortunedex::kit {

/// A temporary data directory. Raises a Failure when it cannot be made.
class ScratchDirectory {
 public:
  /// Empty.
  ScratchDirectory();
  /// With a ChanInfo.xml that holds one FM channel of a country: what the library writes for that
  /// country can be read there.
  explicit ScratchDirectory(DWORD country);

  /// UTF-8.
  std::string Path() const;

 private:
  detail::Scratch m_scratch;
};

}  // namespace zortunedex::kit

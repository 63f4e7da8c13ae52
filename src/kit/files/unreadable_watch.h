#pragma once

#include <cstddef>
#include <string>

#include "kit/notes.h"

namespace zortunedex::kit {

/// Watches whether a save had to put aside a file that could not be read.
class UnreadableWatch {
 public:
  explicit UnreadableWatch(const std::string& directory, const std::string& file = "ChanInfo.xml");
  /// True when a file was put aside since.
  bool PutAside() const;
  /// Notes it when that is so.
  void Report(const TakeNote& note) const;

 private:
  std::string m_directory;
  std::string m_file;
  std::size_t m_before;
};

}  // namespace zortunedex::kit

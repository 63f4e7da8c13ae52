// Files of a data directory that cannot be read. The library takes one for an empty file; hosts
// must not take it for a list without channels, or write over it.
#pragma once

#include <string>

#include "kit/failure.h"

namespace zortunedex::kit {

/// A file that is there cannot be read: "ChanInfo.xml cannot be read: line 3, column 20: an &
/// stands alone; &amp; is meant". What can be done about it is the host's to say.
struct UnreadableFile : Failure {
  using Failure::Failure;
};

/// What becomes of a file that cannot be read.
enum class Unreadable {
  Refuse,       ///< UnreadableFile
  TakeAsEmpty,  ///< as the library does; a save keeps it beside the new one
};

/// Raises UnreadableFile for a file of the directory (UTF-8) that is there, and that the library
/// does not read.
void RequireReadable(const std::string& directory, const std::string& file);

}  // namespace zortunedex::kit

// Channels that a scan found, in a file of any format, as a list is held against them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// What kind of file it is, as far as its bytes, or the names in its folder, tell for certain; null
/// where they do not.
const Format* RecogniseFormat(const Input& input);

/// The channels of a scan's file.
struct Scan {
  ChannelTable table;
  std::size_t read = 0;  ///< channels that stand in the file, also those left out
  Losses losses;
};

/// Raises a Failure for a file that is nothing of the kind or names another country, for a signal
/// type that the format has no form for, and for a format that knows channels of a list alone
/// (m3u).
Scan ReadScan(const Format& format, const Input& input, const ImportRequest& request);

/// How each channel reads to one who has it from a file of the format: whatever the format cannot
/// hold is missing or rounded, and so is what the given file leaves open. One that the format has
/// no form for stays as it is.
std::vector<Channel> AsToldBy(const Format& format, const Input& file,
                              const ExportRequest& request);

}  // namespace zortunedex::kit::interchange

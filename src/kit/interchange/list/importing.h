// Channels of other files into the list, with a report of what did not come along.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// Where the channels of a file come to stand.
enum class Into {
  Empty,    ///< the list has no channels
  Append,   ///< behind its last channel
  Replace,  ///< in the place of all its channels
};

/// A file of many lines may lose more than memory holds: what is beyond this is counted.
inline constexpr std::size_t kMostTold = 1'000'000;

/// What an import makes of a list. Nothing is saved.
struct Import {
  ChannelTable table;  ///< the list as it is to be
  std::size_t read = 0;
  std::size_t taken = 0;         ///< channels of the file that are in it
  std::optional<DWORD> country;  ///< where the file names one
  Losses losses;
};

/// The list that a file makes of the one there is. Channels without an index stand behind the one
/// before them; where the indexes of a file do not ascend, its channels are numbered in their order
/// (L104), as they are when they are appended. What the channel file will not keep of a value is in
/// the report. Raises a Failure for a file that is nothing of the kind or has too many channels,
/// and for a signal type that the format has no form for.
Import ImportChannels(const Format& format, const Input& input, const ImportRequest& request,
                      Into into);

}  // namespace zortunedex::kit::interchange

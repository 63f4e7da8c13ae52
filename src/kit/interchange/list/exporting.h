// Channels out of the list, with a report of what is left behind.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// What an export made, and what it left behind.
struct Export {
  Output output;
  Losses losses;
};

/// Writes the channels in a format, reads back what was written and holds every value against what
/// the list has: the report is complete whatever the writer does. Raises a Failure for a signal
/// type that the format has no form for, and when what was written does not read back channel by
/// channel; InvalidArgument for a station block that is not the signal type's.
Export ExportChannels(const Format& format, const ExportRequest& request);

/// The channels that an output holds, in the order of `written`, read as they are read anywhere.
std::vector<Channel> ReadBack(const Format& format, const Output& output,
                              const ExportRequest& request);

}  // namespace zortunedex::kit::interchange

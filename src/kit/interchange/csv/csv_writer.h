// Channels as a table for spreadsheets, everything that the channel file has of them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// A row of names and one for each channel: commas, CR LF, quotes where they are needed, a byte
/// order mark unless the request does without.
void WriteCsv(const ExportRequest& request, Output& output, Losses& losses);

}  // namespace zortunedex::kit::interchange

// Channels as one JSON document, everything that the list has of them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// {"tunedex":"channels","version":1,"country","signal","units","codepage","channels":[...]}, each
/// channel as `channels show --json` prints it, but for a lock that is neither 0 nor 1: its number.
void WriteJson(const ExportRequest& request, Output& output, Losses& losses);

}  // namespace zortunedex::kit::interchange

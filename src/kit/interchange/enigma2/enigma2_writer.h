// Channels as receivers with Enigma2 keep them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// The folder of settings: services and transponders in both forms of today, and bouquets of
/// television and radio with all of them in the list's order and with the favourites. Channels
/// without a service id (L404) and those whose identity another one has (L403) are left out.
void WriteEnigma2(const ExportRequest& request, Output& output, Losses& losses);

/// Fields whose difference says something else than usual.
std::span<const FieldCode> Enigma2Codes();

}  // namespace zortunedex::kit::interchange

// Channels as the tools of libdvbv5 keep them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// A section of KEY = VALUE lines for each channel. Channels without a service id are left out.
void WriteDvbv5(const ExportRequest& request, Output& output, Losses& losses);

/// Fields whose difference says something else than usual.
std::span<const FieldCode> Dvbv5Codes();

}  // namespace zortunedex::kit::interchange

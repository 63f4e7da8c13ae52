// Reads a channels.conf, be it of the Video Disk Recorder or of a scanner.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange::vdr {

/// Channels of other signal types are left out (L402), as is what the program itself refuses: a
/// line without an identity (L404), a second one of the same (L403). Failure for a file without one
/// line that is a channel or a group, unless it is empty.
ImportResult Read(const Input& input, const ImportRequest& request, Losses& losses);

}  // namespace zortunedex::kit::interchange::vdr

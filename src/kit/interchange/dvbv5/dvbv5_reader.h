// Channel files of the tools of libdvbv5, as scanners write them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// Every line is taken or in the report. Sections of other signal types than the list's are left
/// out (L402), and so are those without a service id, as tables of transponders have them (L404).
/// Failure for a file without sections.
ImportResult ReadDvbv5(const Input& input, const ImportRequest& request, Losses& losses);

}  // namespace zortunedex::kit::interchange

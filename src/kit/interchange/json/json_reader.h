// Reads the documents that the JSON writer makes, also where people changed them.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// Failure for what is no such document, and for one of another signal type, version or unit.
ImportResult ReadJson(const Input& input, const ImportRequest& request, Losses& losses);

}  // namespace zortunedex::kit::interchange

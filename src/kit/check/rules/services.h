#pragma once

#include <string>

#include "core/interfaces.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

/// What makes a channel the same service as another one of its list: "S19.2E-1-1011-11110-V".
/// Empty for a channel that says too little to be told from others.
std::string ServiceIdentity(const markup::Document& document, markup::Index channel,
                            InputSignalType signal);

}  // namespace zortunedex::kit::check

// The parameters of a line: letters, most of them with a number.
#pragma once

#include "kit/interchange/loss.h"
#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange::vdr {

/// Takes them into the tuning of the service, whose delivery is known. Everything that it has no
/// place for is a loss.
void TakeParameters(std::string_view text, const Place& place, Service& service, Losses& losses);

}  // namespace zortunedex::kit::interchange::vdr

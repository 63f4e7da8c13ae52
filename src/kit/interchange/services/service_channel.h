// A channel of the list as a service, and back.
#pragma once

#include "kit/interchange/format.h"
#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange {

/// What a channel is for other programs. Adds a loss for what is assumed: second generation and
/// automatic modulation where the list has none (L310), languages (L311), bandwidth and frequency
/// of an RF channel (L314).
Service FromChannel(const Channel& channel, const ExportRequest& request, Losses& losses);

/// A channel of the list's signal type that holds what it can of the service, which is of that
/// type. Adds a loss for everything else: words (L110), names (L201), numbers out of range (L503),
/// streams beyond the room of the block (L102), fields without a place (L101), the position (L313),
/// CA ids (L112), the provider (L204). `line` is where it stands. An index of 0 stays 0.
Channel ToChannel(const Service& service, std::size_t line, const ImportRequest& request,
                  Losses& losses);

}  // namespace zortunedex::kit::interchange

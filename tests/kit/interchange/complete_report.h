// Whether a report of losses is complete: told from the JSON of the channels, not by what makes it.
#pragma once

#include "kit/interchange/exchange.h"

namespace zortunedex::kit {

/// Names of the attributes that two channels have different values of, as reports name them:
/// "networkName", "AudioStream.pid", "AudioStream" for entries that only one of them has.
std::vector<std::string> FieldsThatDiffer(const Exchange& exchange, const Channel& a,
                                          const Channel& b);

/// Exports the list and imports the file where there is no list. Every value that came back
/// different must have a loss, and every loss of a channel that is in the file, but for what was
/// assumed, a value. What is exported then must be the same file, or what `lasting` makes of it.
void ExpectCompleteReport(const Exchange& exchange, const char* format,
                          std::string (*lasting)(const std::string& bytes) = nullptr);

}  // namespace zortunedex::kit

// Any bytes as a table of channels.
#include "support/exchange.h"

using namespace zortunedex::kit;

void Fuzz(const BYTE* data, std::size_t size) { FuzzReader("csv", true, data, size); }

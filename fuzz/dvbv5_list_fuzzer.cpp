// Any bytes as a channel file of libdvbv5's tools.
#include "support/exchange.h"

using namespace zortunedex::kit;

void Fuzz(const BYTE* data, std::size_t size) { FuzzReader("dvbv5", false, data, size); }

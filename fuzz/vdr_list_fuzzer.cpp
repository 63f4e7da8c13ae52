// Any bytes as a channels.conf.
#include "support/exchange.h"

using namespace zortunedex::kit;

void Fuzz(const BYTE* data, std::size_t size) { FuzzReader("vdr", false, data, size); }

// Any bytes as a document of channels.
#include "support/exchange.h"

using namespace zortunedex::kit;

void Fuzz(const BYTE* data, std::size_t size) { FuzzReader("json", true, data, size); }

#include "kit/interchange/format.h"

#include <algorithm>

namespace interchange {

void FillIndexes(std::vector<ImportedChannel>& channels) {
  UINT last = 0;
  for (ImportedChannel& imported : channels) {
    UINT& index = imported.channel.index;
    if (index == 0 && last != UINT32_MAX) index = last + 1;
    last = index;
  }
}

bool Holds(std::span<const InputSignalType> signals, InputSignalType signal) {
  return std::ranges::find(signals, signal) != signals.end();
}

}  // namespace interchange

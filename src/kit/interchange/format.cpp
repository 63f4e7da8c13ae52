#include "kit/interchange/format.h"

#include <algorithm>

namespace interchange {

bool Holds(std::span<const InputSignalType> signals, InputSignalType signal) {
  return std::ranges::find(signals, signal) != signals.end();
}

}  // namespace interchange

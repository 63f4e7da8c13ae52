#include "kit/history/killed_change.h"

#include "support/linux/child.h"

namespace zortunedex::kit {

int StatusOfKilledChange(const std::string& directory, Operation operation,
                         disk_faults::Fault fault, int position) {
  return ExitStatusOf([&] { return RunFaultyChange(directory, operation, fault, position); });
}

}  // namespace zortunedex::kit

#include "kit/history/killed_change.h"

#include <cstdio>
#include <cstdlib>

#include "kit/check/directory_repair.h"
#include "kit/failure.h"
#include "kit/history/directory_lock.h"
#include "kit/history/recorded_home.h"

namespace zortunedex::kit {

void Operate(const std::string& directory, Operation operation) {
  const history::ChangeSettings settings{directory, "faulty"};
  switch (operation) {
    case Operation::Change:
      history::MakeChange(settings, RecordedHome::Writing({{"ChanInfo.xml", std::string(999, 'n')},
                                                           {"UserSettings.xml", "new"}}));
      break;
    case Operation::Merge:
      history::MakeChange(settings, RecordedHome::Writing({{"ChanInfo.xml", std::string(999, 'n')},
                                                           {"base-49-DVBSatellite.json", "new"}}));
      break;
    case Operation::Undo:
      history::Undo(settings);
      break;
    case Operation::Repair:
      check::RepairDirectory(settings, {});
      break;
    case Operation::DieWithLock: {
      const history::DirectoryLock lock(directory, std::chrono::seconds(0));
      std::_Exit(disk_faults::kKilled);
    }
  }
}

int RunFaultyChange(const std::string& directory, Operation operation, disk_faults::Fault fault,
                    int position) {
  const disk_faults::Scope scope(fault, position);
  try {
    Operate(directory, operation);
    return 0;
  } catch (const Failure& failure) {
    // Nobody expects that: a test that fails so says why.
    std::fprintf(stderr, "refused at call %d: %s\n", disk_faults::Calls(), failure.what());
    return 1;
  }
}

}  // namespace zortunedex::kit

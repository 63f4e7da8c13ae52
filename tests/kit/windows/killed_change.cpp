// A process cannot be copied here: this program starts itself again, with a word in front that
// makes it change the directory and end there.
#include "kit/history/killed_change.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "platform/host.h"
#include "support/windows/child.h"

namespace zortunedex::kit {

namespace {

constexpr char kWord[] = "--faulty-change";

int ChangeAsTold(char** arguments) {
  host::Prepare();
  return RunFaultyChange(arguments[3], static_cast<Operation>(std::atoi(arguments[0])),
                         static_cast<disk_faults::Fault>(std::atoi(arguments[1])),
                         std::atoi(arguments[2]));
}

}  // namespace

int StatusOfKilledChange(const std::string& directory, Operation operation,
                         disk_faults::Fault fault, int position) {
  return StatusOfThisProgram(std::string("kit_tests ") + kWord + " " +
                             std::to_string(static_cast<int>(operation)) + " " +
                             std::to_string(static_cast<int>(fault)) + " " +
                             std::to_string(position) + " \"" + directory + "\"");
}

}  // namespace zortunedex::kit

int main(int argc, char** argv) {
  using namespace zortunedex::kit;
  if (argc == 6 && std::string_view(argv[1]) == kWord) return ChangeAsTold(argv + 2);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

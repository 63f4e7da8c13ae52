// A process cannot be copied here: this program starts itself again, with a word in front that
// makes it save and end there.
#include "reliability/killed_save.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "support/expect.h"
#include "support/windows/child.h"

namespace {

constexpr char kWord[] = "--killed-save";

int Save(char** arguments) {
  const SavedFile& file = kSavedFiles.at(std::strtoul(arguments[0], nullptr, 10));
  const auto count = static_cast<UINT>(std::strtoul(arguments[1], nullptr, 10));
  const auto fault = static_cast<disk_faults::Fault>(std::atoi(arguments[2]));
  ComPtr<IZorTunedex> database;
  if (FAILED(NewDatabase(database))) return 1;
  if (FAILED(database->Open(Wide(arguments[4]).Get(), kSavedCountry, file.signalType))) return 1;
  database->SetStorageType(file.storage);
  file.fill(database.Get(), count);
  const disk_faults::Scope scope(fault, std::atoi(arguments[3]));
  file.save(database.Get());
  return 0;
}

}  // namespace

int StatusOfKilledSave(const SavedFile& file, const TempDir& directory, UINT count,
                       disk_faults::Fault fault, int position) {
  const std::string command =
      std::string("reliability_tests ") + kWord + " " + std::to_string(&file - kSavedFiles.data()) +
      " " + std::to_string(count) + " " + std::to_string(static_cast<int>(fault)) + " " +
      std::to_string(position) + " \"" + directory.Path() + "\"";
  return StatusOfThisProgram(command);
}

int main(int argc, char** argv) {
  if (argc == 7 && std::string_view(argv[1]) == kWord) return Save(argv + 2);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

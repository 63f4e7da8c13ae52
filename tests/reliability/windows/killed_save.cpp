// A process cannot be copied here: this program starts itself again, with a word in front that
// makes it save and end there.
#include "reliability/killed_save.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "platform/windows/module_path.h"
#include "support/expect.h"

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

int StatusOf(std::wstring command) {
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(ModulePath(nullptr).c_str(), command.data(), nullptr, nullptr, FALSE, 0,
                      nullptr, nullptr, &start, &process)) {
    return -1;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(status);
}

}  // namespace

int StatusOfKilledSave(const SavedFile& file, const TempDir& directory, UINT count,
                       disk_faults::Fault fault, int position) {
  const std::string command =
      std::string("reliability_tests ") + kWord + " " + std::to_string(&file - kSavedFiles.data()) +
      " " + std::to_string(count) + " " + std::to_string(static_cast<int>(fault)) + " " +
      std::to_string(position) + " \"" + directory.Path() + "\"";
  return StatusOf(std::wstring(command.begin(), command.end()));
}

int main(int argc, char** argv) {
  if (argc == 7 && std::string_view(argv[1]) == kWord) return Save(argv + 2);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

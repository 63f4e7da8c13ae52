// Memory runs out at every allocation in turn, once or for good: the caller learns of it, files
// hold the old or the new records, and everything can be used again afterwards. What leaked would
// be reported at the program's end.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include <memory>

#include "reliability/linux/every_allocation.h"
#include "reliability/saved_files.h"

namespace {

constexpr UINT kBefore = 2;
constexpr UINT kAfter = 3;

std::string SavedBytes(const SavedFile& file, UINT count) {
  const TempDir directory;
  SaveRecords(file, directory, kBefore);
  SaveRecords(file, directory, count);
  return directory.Read(file.name);
}

class MemoryFaults : public testing::TestWithParam<SavedFile> {};

TEST_P(MemoryFaults, SavingLeavesTheOldOrTheNewRecords) {
  const SavedFile& file = GetParam();
  const std::string before = SavedBytes(file, kBefore);
  const std::string after = SavedBytes(file, kAfter);
  std::unique_ptr<TempDir> directory;
  ComPtr<IZorTunedex> database;
  const auto prepare = [&] {
    directory = std::make_unique<TempDir>();
    directory->Write(file.name, before);
    database = OpenFor(file, *directory);
    file.fill(database.Get(), kAfter);
  };
  const auto check = [&](HRESULT hr, bool hasFailed) {
    const std::string bytes = directory->Read(file.name);
    EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
    EXPECT_TRUE(bytes == before || bytes == after) << bytes;
    EXPECT_EQ(file.FileCount(), directory->Count());
    EXPECT_TRUE(hasFailed || bytes == after);
    // With memory again, the same database saves everything.
    ExpectHr(S_OK, database->SetStorageType(file.storage));
    ExpectHr(S_OK, file.save(database.Get()));
    EXPECT_EQ(after, directory->Read(file.name));
  };
  ForEveryAllocation({prepare, [&] { return file.save(database.Get()); }, check});
}

TEST_P(MemoryFaults, OpeningCanBeDoneAgain) {
  const SavedFile& file = GetParam();
  const TempDir directory;
  SaveRecords(file, directory, kAfter);
  const std::string before = directory.Read(file.name);
  const Bstr path = Wide(directory.Path());
  const ComPtr<IZorTunedex> database = OpenFor(file, directory);
  const auto close = [&] { ExpectHr(S_OK, database->Close()); };
  const auto open = [&] { return database->Open(path.Get(), 49, file.signalType); };
  const auto check = [&](HRESULT hr, bool hasFailed) {
    EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
    if (hr == S_OK) {
      EXPECT_EQ(kAfter, file.count(database.Get()));
    }
    close();
    ExpectHr(S_OK, open());
    EXPECT_EQ(kAfter, file.count(database.Get()));
    EXPECT_EQ(before, directory.Read(file.name));
  };
  ForEveryAllocation({close, open, check});
}

INSTANTIATE_TEST_SUITE_P(Files, MemoryFaults, testing::ValuesIn(kSavedFiles));

}  // namespace

// Memory runs out at every allocation in turn, once or for good: the caller learns of it, files
// hold the old or the new records, and everything can be used again afterwards. What leaked would
// be reported at the program's end.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include "reliability/linux/memory_faults.h"

#include <functional>
#include <new>

#include "reliability/saved_files.h"
#include "support/expect.h"

namespace {

using memory_faults::Lasts;

constexpr UINT kOld = 2;
constexpr UINT kNew = 3;

/// The result of a call, the raised one where it raises.
template <typename Call>
HRESULT ResultOf(const Call& call) {
  try {
    return call();
  } catch (const ComError& error) {
    return error.Error();
  } catch (const std::bad_alloc&) {
    ADD_FAILURE() << "a host knows ComError alone";
    return E_OUTOFMEMORY;
  }
}

/// Runs `attempt` with memory that ends one allocation later each time, until none is missing; it
/// is told where.
void ForEveryAllocation(const std::function<bool(int position, Lasts lasts)>& attempt) {
  for (const Lasts lasts : {Lasts::Once, Lasts::ForGood}) {
    int position = 0;
    for (; attempt(position, lasts); ++position) {
      ASSERT_LT(position, 20000);
      if (testing::Test::HasFailure()) {
        FAIL() << "allocation " << position << (lasts == Lasts::Once ? " once" : " for good");
      }
    }
    EXPECT_GT(position, 0) << "nothing was allocated";
  }
}

std::string SavedBytes(const SavedFile& file, UINT count) {
  const TempDir directory;
  SaveRecords(file, directory, kOld);
  SaveRecords(file, directory, count);
  return directory.Read(file.name);
}

class MemoryFaults : public testing::TestWithParam<SavedFile> {};

TEST_P(MemoryFaults, SavingLeavesTheOldOrTheNewRecords) {
  const SavedFile& file = GetParam();
  const std::string before = SavedBytes(file, kOld);
  const std::string after = SavedBytes(file, kNew);
  ForEveryAllocation([&](int position, Lasts lasts) {
    const TempDir directory;
    directory.Write(file.name, before);
    const ComPtr<IZorTunedex> database = OpenFor(file, directory);
    file.fill(database.Get(), kNew);
    bool hasFailed = false;
    HRESULT hr = S_OK;
    {
      const memory_faults::Scope scope(position, lasts);
      hr = ResultOf([&] { return file.save(database.Get()); });
      hasFailed = scope.HasFailed();
    }
    const std::string bytes = directory.Read(file.name);
    EXPECT_TRUE(hr == S_OK || hr == E_OUTOFMEMORY || hr == E_FAIL) << HrText(hr);
    EXPECT_TRUE(bytes == before || bytes == after) << bytes;
    EXPECT_EQ(1U, directory.Count());
    EXPECT_TRUE(hasFailed || bytes == after);
    // With memory again, the same database saves everything.
    ExpectHr(S_OK, database->SetStorageType(file.storage));
    ExpectHr(S_OK, file.save(database.Get()));
    EXPECT_EQ(after, directory.Read(file.name));
    return hasFailed;
  });
}

TEST_P(MemoryFaults, OpeningCanBeDoneAgain) {
  const SavedFile& file = GetParam();
  const TempDir directory;
  SaveRecords(file, directory, kNew);
  const std::string before = directory.Read(file.name);
  const Bstr path = Wide(directory.Path());
  const ComPtr<IZorTunedex> database = OpenFor(file, directory);
  ForEveryAllocation([&](int position, Lasts lasts) {
    bool hasFailed = false;
    ExpectHr(S_OK, database->Close());
    {
      const memory_faults::Scope scope(position, lasts);
      const HRESULT hr = ResultOf([&] { return database->Open(path.Get(), 49, file.signalType); });
      hasFailed = scope.HasFailed();
      // Loading is an offer: without memory for it, the lists are empty.
      EXPECT_TRUE(hr == S_OK || hr == E_OUTOFMEMORY || hr == E_FAIL) << HrText(hr);
    }
    ExpectHr(S_OK, database->Close());
    ExpectHr(S_OK, database->Open(path.Get(), 49, file.signalType));
    EXPECT_EQ(kNew, file.count(database.Get()));
    EXPECT_EQ(before, directory.Read(file.name));
    return hasFailed;
  });
}

INSTANTIATE_TEST_SUITE_P(Files, MemoryFaults, testing::ValuesIn(kSavedFiles));

/// Every call answers or raises E_OUTOFMEMORY wherever memory ends, or works all the same.
void ExpectToldEverywhere(const std::function<HRESULT()>& call, HRESULT expected = S_OK) {
  ForEveryAllocation([&](int position, Lasts lasts) {
    const memory_faults::Scope scope(position, lasts);
    const HRESULT hr = ResultOf(call);
    const bool hasFailed = scope.HasFailed();
    ExpectHr(hasFailed ? E_OUTOFMEMORY : expected, hr);
    return hasFailed;
  });
}

TEST(MemoryFaultsOfRecords, ChannelTexts) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenFor(kSavedFiles[0], directory);
  kSavedFiles[0].fill(database.Get(), 1);
  ComPtr<IChannelInfoMgr> list;
  ComPtr<IChannelInfo> channel;
  database->GetChannelInfoMgr(kSavedFiles[0].signalType, list.Receive());
  ExpectHr(S_OK, list->GetChannelInfoByIndex(1, channel.Receive()));
  const Bstr text = Wide(std::string(50, 'n'));
  Bstr got;
  ExpectToldEverywhere([&] { return channel->SetChannelName(text.Get()); });
  ExpectToldEverywhere([&] { return channel->SetChannelDspName(text.Get()); });
  ExpectToldEverywhere([&] { return channel->GetChannelName(got.Receive()); });
  ExpectText(text.View(), got.Get());
  ExpectToldEverywhere([&] { return channel->GetChannelDspName(got.Receive()); });
  ExpectText(text.View(), got.Get());
  ExpectToldEverywhere([&] { return list->CreateChannelInfo(channel.Receive()); });
  ExpectToldEverywhere([&] { return list->SortChannel(SortChannelByNo, 1); });
}

TEST(MemoryFaultsOfRecords, SatelliteTexts) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenFor(kSavedFiles[2], directory);
  ComPtr<ISatelliteInfoMgr> list;
  ComPtr<ISatelliteInfo> satellite;
  database->GetSatelliteInfoMgr(list.Receive());
  ExpectToldEverywhere([&] { return list->CreateSatelliteInfo(satellite.Receive()); });
  const Bstr text = Wide("text");
  Bstr got;
  ExpectToldEverywhere([&] { return satellite->SetName(text.Get()); });
  ExpectToldEverywhere([&] { return satellite->SetID(text.Get()); });
  ExpectToldEverywhere([&] { return satellite->GetName(got.Receive()); });
  ExpectToldEverywhere([&] { return satellite->GetID(got.Receive()); });
  ExpectText(text.View(), got.Get());
  ExpectHr(S_OK, list->AddSatelliteInfo(satellite.Get()));
  ComPtr<ISatelliteInfo> found;
  ExpectToldEverywhere([&] { return list->GetSatInfoByName(text.Get(), found.Receive()); });
  EXPECT_EQ(satellite.Get(), found.Get());
  ComPtr<ITransponderInfoMgr> transponders;
  ComPtr<ITransponderInfo> transponder;
  satellite->GetTransponderMgr(SatFreqBand_KuBand, transponders.Receive());
  ExpectToldEverywhere([&] { return transponders->CreateTransponderInfo(transponder.Receive()); });
  ExpectToldEverywhere([&] { return transponder->SetName(text.Get()); });
  ExpectToldEverywhere([&] { return transponder->GetName(got.Receive()); });
}

TEST(MemoryFaultsOfRecords, Databases) {
  ExpectToldEverywhere([] {
    ComPtr<IZorTunedex> database;
    return NewDatabase(database);
  });
}

}  // namespace

// Many threads at once, each with objects of its own.
#include "contract/threads.h"

#include "contract/database.h"
#include "contract/stations.h"
#include "platform/host.h"
#include "support/expect.h"
#include "support/temp_dir.h"

TEST(Threads, CreationAndRelease) {
  InThreads([](unsigned) {
    for (int round = 0; round < 200; ++round) {
      const ComPtr<IZorTunedex> database = NewDatabase();
      ExpectRefCount(1, database.Get());
      ExpectHr(S_FALSE, host::CanUnloadNow());
    }
  });
  ExpectHr(S_OK, host::CanUnloadNow());
}

TEST(Threads, ReferencesOnOneObject) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  InThreads([&database](unsigned) {
    for (int round = 0; round < 2000; ++round) {
      const ComPtr<IZorTunedex> held = database;
      void* identity = nullptr;
      ExpectHr(S_OK, held->QueryInterface(IID_IUnknown, &identity));
      static_cast<IUnknown*>(identity)->Release();
    }
  });
  ExpectRefCount(1, database.Get());
}

TEST(Threads, LocksOfTheLibrary) {
  InThreads([](unsigned) {
    const ComPtr<IClassFactory> factory = GetFactory();
    for (int round = 0; round < 500; ++round) {
      ExpectHr(S_OK, factory->LockServer(1));
      ExpectHr(S_FALSE, host::CanUnloadNow());
      ExpectHr(S_OK, factory->LockServer(0));
    }
  });
  ExpectHr(S_OK, host::CanUnloadNow());
}

TEST(Threads, DatabasesOfTheirOwn) {
  InThreads([](unsigned number) {
    const InputSignalType signalType = kBlockTypes[number % std::size(kBlockTypes)];
    const TempDir directory;
    for (const EStorageType storage : {StorageXML, StoragePreFmtXML}) {
      const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), signalType);
      const ComPtr<IChannelInfoMgr> list = ListOf(database, signalType);
      ExpectHr(S_OK, list->Clear());
      AddMade(list, signalType, 20 + number);
      ExpectHr(S_OK, database->SetStorageType(storage));
      ExpectHr(S_OK, database->SaveChannelToFile());
      const ComPtr<IZorTunedex> loaded = OpenDatabase(directory.Path(), signalType);
      ExpectMade(ListOf(loaded, signalType), signalType, 20 + number);
      ExpectHr(S_OK, ListOf(loaded, signalType)->SortChannel(SortChannelByNo, 1));
    }
  });
  ExpectHr(S_OK, host::CanUnloadNow());
}

// The calls that lock may come from several threads.
TEST(Threads, LockedCallsOnOneList) {
  constexpr InputSignalType kType = InputSignalDVBTerrestrial;
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kType);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kType);
  InThreads([&list](unsigned number) {
    for (UINT round = 0; round < 25; ++round) {
      const UINT index = 1 + round * kThreads + number;
      Add(list, MakeChannel(kType, index));
      EXPECT_GE(CountOf(list), round);
      EXPECT_EQ(index, Fetch(ChannelAt(list, index)).index);
      ComPtr<IChannelInfo> found;
      ExpectHr(S_OK, list->GetChannelInfoByNo(1000 + index, found.Receive()));
    }
  });
  ExpectMade(list, kType, 25 * kThreads);
}

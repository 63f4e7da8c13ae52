// Memory runs out while presets are asked for, selected, and customer lists stored and deleted:
// both files hold the old or the new channels, and what failed can be done again.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include "reliability/linux/every_allocation.h"
#include "reliability/saved_files.h"

namespace {

const SavedFile& Presets() { return kSavedFiles[3]; }
constexpr UINT kStored = 2;

/// A directory with some channels and one customer list, put back before every attempt.
class MemoryFaultsOfPresets : public testing::Test {
 protected:
  MemoryFaultsOfPresets() {
    SaveRecords(Presets(), m_directory, kStored);
    m_presets = m_directory.Read(Presets().name);
    m_channels = m_directory.Read(Presets().other);
  }
  void Prepare() {
    m_directory.Write(Presets().name, m_presets);
    m_directory.Write(Presets().other, m_channels);
    m_database = OpenFor(Presets(), m_directory);
  }
  /// What a call makes of a file when memory suffices.
  std::string After(const std::string& name, const std::function<HRESULT()>& call) {
    Prepare();
    ExpectHr(S_OK, call());
    return m_directory.Read(name);
  }
  UINT CountOfChannels() const {
    ComPtr<IChannelInfoMgr> list;
    UINT count = 0;
    ExpectHr(S_OK, m_database->GetChannelInfoMgr(Presets().signalType, list.Receive()));
    ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
    return count;
  }

  const TempDir m_directory;
  std::string m_presets;
  std::string m_channels;
  ComPtr<IZorTunedex> m_database;
};

}  // namespace

TEST_F(MemoryFaultsOfPresets, Getters) {
  Prepare();
  LONG count = 0;
  LONG other = 0;
  CHAR name[260] = {};
  ExpectToldEverywhere([&] { return m_database->GetAreaCount(&count); });
  EXPECT_EQ(2, count);
  ExpectToldEverywhere([&] { return m_database->GetAreaNameByIndex(0, name); });
  EXPECT_STREQ("North", name);
  ExpectToldEverywhere([&] { return m_database->GetSubAreaCount(kCustomerArea, &count); });
  EXPECT_EQ(1, count);
  ExpectToldEverywhere([&] { return m_database->GetSubAreaNameByIndex(0, 0, name); });
  EXPECT_STREQ("Harbour", name);
  ExpectToldEverywhere([&] { return m_database->GetArea(&count, &other); });
}

// Hosts look at the pointer: a list that cannot be made is S_OK and null.
TEST_F(MemoryFaultsOfPresets, Lists) {
  Prepare();
  ComPtr<IChannelInfoMgr> list;
  ForEveryAllocation(
      {[&] { list = nullptr; },
       [&] { return m_database->GetPresetChannelMgr(kCustomerArea, 0, list.Receive()); },
       [&](HRESULT hr, bool hasFailed) {
         EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
         EXPECT_EQ(!hasFailed, static_cast<bool>(list));
         EXPECT_EQ(kStored, Presets().count(m_database.Get()));
       }});
}

TEST_F(MemoryFaultsOfPresets, Loading) {
  ForEveryAllocation({[&] { Prepare(); }, [&] { return m_database->LoadPresetOneSegChannelInfo(); },
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        // Those that were loaded before stay.
                        EXPECT_EQ(kStored, Presets().count(m_database.Get()));
                        ExpectHr(S_OK, m_database->LoadPresetOneSegChannelInfo());
                        EXPECT_EQ(kStored, Presets().count(m_database.Get()));
                      }});
}

TEST_F(MemoryFaultsOfPresets, Selecting) {
  const auto select = [&] { return m_database->SetArea(0, 0); };
  const std::string after = After(Presets().other, select);
  EXPECT_NE(m_channels, after);
  ForEveryAllocation({[&] { Prepare(); }, select,
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        const std::string bytes = m_directory.Read(Presets().other);
                        EXPECT_TRUE(bytes == after || (hasFailed && bytes == m_channels)) << bytes;
                        // The old list or the new one: a save that follows never writes an empty
                        // one.
                        const UINT count = CountOfChannels();
                        EXPECT_TRUE(count == 1 || (hasFailed && count == kStored)) << count;
                        ExpectHr(S_OK, select());
                        EXPECT_EQ(after, m_directory.Read(Presets().other));
                        EXPECT_EQ(m_presets, m_directory.Read(Presets().name));
                      }});
}

TEST_F(MemoryFaultsOfPresets, StoringANewList) {
  const auto store = [&] { return m_database->SaveCustomerChannelList(1, "new"); };
  const std::string after = After(Presets().name, store);
  EXPECT_NE(m_presets, after);
  ForEveryAllocation({[&] { Prepare(); }, store,
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        const std::string bytes = m_directory.Read(Presets().name);
                        EXPECT_TRUE(bytes == after || (hasFailed && bytes == m_presets)) << bytes;
                        ExpectHr(S_OK, store());
                        EXPECT_EQ(after, m_directory.Read(Presets().name));
                      }});
}

// The list may be gone from memory and not from the file: what the file holds is read again first.
TEST_F(MemoryFaultsOfPresets, DeletingAList) {
  Prepare();
  for (LONG index = 1; index < 3; ++index) {
    ExpectHr(S_OK, m_database->SaveCustomerChannelList(index, "more"));
  }
  m_presets = m_directory.Read(Presets().name);
  const auto remove = [&] { return m_database->DeleteCustomerChannelList(0); };
  const std::string after = After(Presets().name, remove);
  EXPECT_NE(m_presets, after);
  ForEveryAllocation({[&] { Prepare(); }, remove,
                      [&](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                        const std::string bytes = m_directory.Read(Presets().name);
                        EXPECT_EQ(hr == S_OK ? after : m_presets, bytes);
                        if (bytes == after) return;
                        ExpectHr(S_OK, m_database->LoadPresetOneSegChannelInfo());
                        ExpectHr(S_OK, remove());
                        EXPECT_EQ(after, m_directory.Read(Presets().name));
                      }});
}

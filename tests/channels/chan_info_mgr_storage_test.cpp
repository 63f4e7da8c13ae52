// Loading and saving a list from and to an element.
#include "channels/channel_records.h"
#include "channels/channel_set.h"
#include "support/random.h"

namespace {

DWORD FrequencyOf(IChannelInfo* record) {
  DWORD frequency = 0;
  ExpectHr(S_OK, record->GetChannelFreq(&frequency));
  return frequency;
}

// Frequencies by place: renumbers the list to walk it, so it comes last in a test.
std::vector<DWORD> Frequencies(IChannelInfoMgr* list) {
  list->RemoveChannelInfo(MakeRecord(InputSignalFMRadio).Detach());
  std::vector<DWORD> frequencies;
  ComPtr<IChannelInfo> record;
  for (UINT index = 1; SUCCEEDED(list->GetChannelInfoByIndex(index, record.Receive())); ++index) {
    frequencies.push_back(FrequencyOf(record.Get()));
  }
  return frequencies;
}

class ChanInfoMgrStorage : public testing::Test {
 protected:
  ComPtr<IChannelInfoMgr> m_list = MakeList(InputSignalFMRadio);
  ChannelSet m_set;

  HRESULT Load() { return m_list->Load(dom::kIidNode, m_set.Node()); }
  HRESULT Save() { return m_list->Save(dom::kIidNode, m_set.Node()); }
  ComPtr<IChannelInfo> AddRecord(UINT index, DWORD frequency) {
    ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio, index);
    Station station(InputSignalFMRadio);
    station->dwFrequency = frequency;
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    ExpectHr(S_OK, m_list->AddChannelInfo(record.Get()));
    return record;
  }
};

TEST_F(ChanInfoMgrStorage, ArgumentsAreChecked) {
  m_set.Add(1);
  AddRecord(1, 1);
  for (const IID& iid : {IID(IID_IUnknown), IID_IChannelInfo, IID(IID_IDispatch)}) {
    ExpectHr(E_NOTIMPL, m_list->Load(iid, m_set.Node()));
    ExpectHr(E_NOTIMPL, m_list->Load(iid, nullptr));
    ExpectHr(E_NOTIMPL, m_list->Save(iid, m_set.Node()));
    ExpectHr(E_NOTIMPL, m_list->Save(iid, nullptr));
  }
  for (const IID& iid : {dom::kIidNode, dom::kIidElement}) {
    ExpectHr(E_INVALIDARG, m_list->Load(iid, nullptr));
    ExpectHr(E_INVALIDARG, m_list->Save(iid, nullptr));
  }
  EXPECT_EQ(1u, CountOf(m_list.Get()));
  EXPECT_EQ(1, DirtyOf(m_list.Get()));
  EXPECT_EQ(1, m_set.Count());
  ExpectHr(S_OK, m_list->Load(dom::kIidElement, m_set.Node()));
  ExpectHr(S_OK, m_list->Save(dom::kIidElement, m_set.Node()));
}

TEST_F(ChanInfoMgrStorage, ForeignObjectsAreRefusedAndNotHeld) {
  const ComPtr<IChannelInfo> foreign = MakeRecord(InputSignalFMRadio);
  AddRecord(1, 1);
  ExpectHr(E_INVALIDARG, m_list->Load(dom::kIidNode, foreign.Get()));
  ExpectHr(E_INVALIDARG, m_list->Save(dom::kIidNode, foreign.Get()));
  ExpectRefCount(1, foreign.Get());
  // The list goes on with the element it has.
  ExpectHr(S_OK, Load());
  ExpectHr(E_INVALIDARG, m_list->Load(dom::kIidNode, foreign.Get()));
  m_set.Add(4);
  ExpectHr(S_OK, m_list->Clear());
  EXPECT_EQ(0, m_set.Count());
}

TEST_F(ChanInfoMgrStorage, LoadReadsEveryChannel) {
  m_set.Add(1, 87500);
  m_set.AddOther("Comment");
  m_set.Add(2, 98000);
  ExpectHr(S_OK, Load());
  EXPECT_EQ(2u, CountOf(m_list.Get()));
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, m_list->GetChannelInfoByIndex(2, record.Receive()));
  EXPECT_EQ(98000u, FrequencyOf(record.Get()));
  InputSignalType signalType = InputSignalUnknown;
  ExpectHr(S_OK, record->GetSignalType(&signalType));
  EXPECT_EQ(InputSignalFMRadio, signalType);
  ExpectRefCount(2, record.Get());
  // Nothing is dirty after loading, and the element is as it was.
  EXPECT_EQ(0, DirtyOf(record.Get()));
  EXPECT_EQ(0, DirtyOf(m_list.Get()));
  EXPECT_EQ(2, m_set.Count());
}

TEST_F(ChanInfoMgrStorage, EmptySetIsLoaded) {
  m_list->SetDirty(1);
  ExpectHr(S_OK, Load());
  EXPECT_EQ(0u, CountOf(m_list.Get()));
  EXPECT_EQ(0, DirtyOf(m_list.Get()));
}

TEST_F(ChanInfoMgrStorage, LoadKeepsTheIndexesOfTheFile) {
  for (const LONG index : {9, 3, 3, 20, 0}) m_set.Add(index, index);
  ExpectHr(S_OK, Load());
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, m_list->GetChannelInfoByIndex(20, record.Receive()));
  ExpectHr(E_FAIL, m_list->GetChannelInfoByIndex(1, record.Receive()));
  EXPECT_EQ((std::vector<DWORD>{0, 3, 3, 9, 20}), Frequencies(m_list.Get()));
}

// Loading is no clearing: channels come twice, the later ones in front of their equals.
TEST_F(ChanInfoMgrStorage, LoadAddsToWhatIsThere) {
  m_set.Add(1, 10);
  m_set.Add(2, 20);
  ExpectHr(S_OK, Load());
  ChannelSet other;
  other.Add(1, 11);
  other.Add(2, 21);
  ExpectHr(S_OK, m_list->Load(dom::kIidNode, other.Node()));
  EXPECT_EQ((std::vector<DWORD>{11, 10, 21, 20}), Frequencies(m_list.Get()));
}

// In whatever order the file has them: as one AddChannelInfo after the other.
TEST_F(ChanInfoMgrStorage, LoadPlacesAsAddingOneByOne) {
  for (std::uint32_t seed = 1; seed <= 30; ++seed) {
    Random random(seed);
    ChannelSet set;
    const auto loaded = MakeList(InputSignalFMRadio);
    const auto added = MakeList(InputSignalFMRadio);
    const auto addTo = [](IChannelInfoMgr* list, UINT index, LONG frequency) {
      const auto record = MakeRecord(InputSignalFMRadio, index);
      Station station(InputSignalFMRadio);
      station->dwFrequency = static_cast<DWORD>(frequency);
      record->SetStationInfo(station.Get());
      ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
      return record;
    };
    std::vector<ComPtr<IChannelInfo>> silent;
    for (LONG i = 0; i < 8; ++i) {
      const UINT index = random(10);
      silent.push_back(addTo(loaded.Get(), index, i));
      silent.push_back(addTo(added.Get(), index, i));
    }
    // Two that do not tell their index any more.
    silent[4]->SetChannelIndex(0xFFFFFFFF);
    silent[5]->SetChannelIndex(0xFFFFFFFF);
    for (LONG i = 0; i < 40; ++i) {
      const UINT index = random(seed % 3 == 0 ? 3 : 60);
      set.Add(static_cast<LONG>(index), 100 + i);
      addTo(added.Get(), index, 100 + i);
    }
    ExpectHr(S_OK, loaded->Load(dom::kIidNode, set.Node()));
    EXPECT_EQ(Frequencies(added.Get()), Frequencies(loaded.Get())) << seed;
  }
}

TEST_F(ChanInfoMgrStorage, LoadAsksWhatIsThereOnce) {
  HostRecord* raw = nullptr;
  const ComPtr<IChannelInfo> host = HostRecord::Make(&raw);
  raw->index = 500;
  ExpectHr(S_OK, m_list->AddChannelInfo(host.Get()));
  raw->calls = 0;
  for (LONG i = 0; i < 1000; ++i) m_set.Add(1000 - i);
  ExpectHr(S_OK, Load());
  EXPECT_EQ(1001u, CountOf(m_list.Get()));
  EXPECT_LE(raw->calls, 2);  // once for its index, once for the count here
}

TEST_F(ChanInfoMgrStorage, ResultIsThatOfTheLastElement) {
  // The index that cannot be had: such a channel cannot be added.
  m_set.Add(1);
  m_set.Add(-1);
  ExpectHr(E_FAIL, Load());
  EXPECT_EQ(1u, CountOf(m_list.Get()));
  m_set.Add(3);
  m_list->Close();
  ExpectHr(S_OK, Load());
  EXPECT_EQ(2u, CountOf(m_list.Get()));
  EXPECT_EQ(0, DirtyOf(m_list.Get()));
}

TEST_F(ChanInfoMgrStorage, TypesWithoutAFormAreLeftOut) {
  for (const InputSignalType signalType : kAllSignalTypes) {
    if (BlockSizeOf(signalType) != 0) continue;
    const auto list = MakeList(signalType);
    ChannelSet set;
    set.Add(1);
    set.Add(2);
    list->SetDirty(1);
    ExpectHr(E_NOTIMPL, list->Load(dom::kIidNode, set.Node()));
    EXPECT_EQ(0u, CountOf(list.Get()));
    EXPECT_EQ(0, DirtyOf(list.Get()));
  }
}

// A record in the list changes it while it is asked for its index.
TEST_F(ChanInfoMgrStorage, LoadIntoAListThatChangesMeanwhile) {
  HostRecord* raw = nullptr;
  ComPtr<IChannelInfo> host = HostRecord::Make(&raw);
  raw->index = 2;
  ExpectHr(S_OK, m_list->AddChannelInfo(host.Get()));
  host.Reset();
  AddRecord(7, 70);
  raw->onCall = [&] {
    raw->onCall = nullptr;
    m_list->Clear();
  };
  m_set.Add(3, 30);
  m_set.Add(1, 10);
  ExpectHr(S_OK, Load());
  EXPECT_EQ(0, HostRecord::alive);
  EXPECT_EQ((std::vector<DWORD>{10, 30}), Frequencies(m_list.Get()));
}

TEST_F(ChanInfoMgrStorage, ClearStripsTheHeldElement) {
  m_set.Add(1);
  m_set.AddOther("Note");
  m_set.Add(2);
  ExpectHr(S_OK, Load());
  m_set.Add(9);  // also what came later
  ExpectHr(S_OK, m_list->Clear());
  EXPECT_EQ(0, m_set.Count());
  EXPECT_EQ(1, m_set.Count("./Note"));
  EXPECT_EQ(0u, CountOf(m_list.Get()));
}

TEST_F(ChanInfoMgrStorage, CloseAndDestructionLeaveTheElement) {
  m_set.Add(1);
  ExpectHr(S_OK, Load());
  ExpectHr(S_OK, m_list->Close());
  EXPECT_EQ(1, m_set.Count());
  // It is not held any more.
  ExpectHr(S_OK, m_list->Clear());
  EXPECT_EQ(1, m_set.Count());
  ExpectHr(S_OK, Load());
  m_list.Reset();
  EXPECT_EQ(1, m_set.Count());
}

TEST_F(ChanInfoMgrStorage, RenumberingStripsTheHeldElement) {
  const auto fresh = [&] {
    m_list = MakeList(InputSignalFMRadio);
    m_set = ChannelSet();
    for (LONG i = 1; i <= 3; ++i) m_set.Add(i, 10 * i);
    ExpectHr(S_OK, Load());
  };
  fresh();
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, m_list->GetChannelInfoByIndex(2, record.Receive()));
  ExpectHr(S_OK, m_list->RemoveChannelInfo(record.Get()));
  EXPECT_EQ(0, m_set.Count());
  ExpectHr(S_OK, Save());
  EXPECT_EQ((std::vector<LONG>{1, 2}), m_set.Indexes());

  fresh();
  ExpectHr(S_OK, m_list->MoveChannel(3, 1));
  EXPECT_EQ(0, m_set.Count());
  ExpectHr(S_OK, Save());
  EXPECT_EQ((std::vector<LONG>{1, 2, 3}), m_set.Indexes());

  fresh();
  ExpectHr(S_OK, m_list->SortChannel(SortChannelByNo, 0));
  EXPECT_EQ(0, m_set.Count());
  // Adding alone keeps the elements.
  fresh();
  AddRecord(2, 5);
  EXPECT_EQ(3, m_set.Count());
}

TEST_F(ChanInfoMgrStorage, LastLoadedElementIsHeld) {
  ChannelSet other;
  m_set.Add(1);
  other.Add(2);
  ExpectHr(S_OK, Load());
  ExpectHr(S_OK, m_list->Load(dom::kIidNode, other.Node()));
  ExpectHr(S_OK, m_list->Clear());
  EXPECT_EQ(1, m_set.Count());
  EXPECT_EQ(0, other.Count());
}

TEST_F(ChanInfoMgrStorage, SavedElementIsNotHeld) {
  AddRecord(1, 10);
  ExpectHr(S_OK, Save());
  EXPECT_EQ(1, m_set.Count());
  ExpectHr(S_OK, m_list->Clear());
  EXPECT_EQ(1, m_set.Count());
}

TEST_F(ChanInfoMgrStorage, SaveWritesInPlaceAndCleans) {
  m_set.Add(3, 1);
  m_set.Add(1, 1);
  const auto two = AddRecord(2, 22);
  const auto three = AddRecord(3, 33);
  const auto nine = AddRecord(9, 99);
  ExpectHr(S_OK, Save());
  EXPECT_EQ((std::vector<LONG>{2, 3, 1, 9}), m_set.Indexes());
  EXPECT_EQ(0, DirtyOf(m_list.Get()));
  EXPECT_EQ(0, DirtyOf(two.Get()));
  dom::Element channel;
  ExpectHr(S_OK, m_set.Get().SelectSingle("./Channel[@index='3']", channel));
  std::int32_t frequency = 0;
  ExpectHr(S_OK, channel.GetInt("freq", frequency));
  EXPECT_EQ(33, frequency);
  // Again changes nothing.
  ExpectHr(S_OK, Save());
  EXPECT_EQ((std::vector<LONG>{2, 3, 1, 9}), m_set.Indexes());
}

TEST_F(ChanInfoMgrStorage, SaveOfAnEmptyList) {
  m_list->SetDirty(1);
  ExpectHr(S_OK, Save());
  EXPECT_EQ(0, DirtyOf(m_list.Get()));
  EXPECT_EQ(0, m_set.Count());
}

TEST_F(ChanInfoMgrStorage, SaveGoesOnAfterAFailureAndAnswersTheLast) {
  const auto first = AddRecord(1, 10);
  const auto silent = AddRecord(2, 20);
  const auto last = AddRecord(3, 30);
  silent->SetChannelIndex(0xFFFFFFFF);
  ExpectHr(S_OK, Save());
  EXPECT_EQ((std::vector<LONG>{1, 3}), m_set.Indexes());
  // What has no element was not written and stays dirty.
  EXPECT_EQ(1, DirtyOf(silent.Get()));
  EXPECT_EQ(0, DirtyOf(last.Get()));
  last->SetChannelIndex(0xFFFFFFFF);
  ExpectHr(E_FAIL, Save());
}

// Channels of these types live in memory alone. Each save leaves one more empty element, which can
// never be found by its index, until the list is cleared or renumbered: files in use have them.
TEST_F(ChanInfoMgrStorage, TypesWithoutAFormLeaveEmptyElements) {
  m_list = MakeList(InputSignalDVBCable);
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalDVBCable, 1);
  ExpectHr(S_OK, m_list->AddChannelInfo(record.Get()));
  for (LONG saves = 1; saves <= 3; ++saves) {
    record->SetDirty(1);
    ExpectHr(E_NOTIMPL, Save());
    EXPECT_EQ(std::vector<LONG>(static_cast<std::size_t>(saves), -7), m_set.Indexes());
    EXPECT_EQ(0, DirtyOf(record.Get()));
    EXPECT_EQ(0, DirtyOf(m_list.Get()));
  }
}

TEST_F(ChanInfoMgrStorage, SaveOfAListThatChangesMeanwhile) {
  for (const bool release : {false, true}) {
    m_list = MakeList(InputSignalFMRadio);
    HostRecord* raw = nullptr;
    ComPtr<IChannelInfo> host = HostRecord::Make(&raw);
    raw->index = 1;
    ExpectHr(S_OK, m_list->AddChannelInfo(host.Get()));
    host.Reset();
    AddRecord(7, 70);
    raw->onCall = [&] {
      raw->onCall = nullptr;
      if (release) {
        m_list.Reset();
      } else {
        m_list->Clear();
      }
    };
    IChannelInfoMgr* const list = m_list.Get();
    static_cast<void>(list->Save(dom::kIidNode, m_set.Node()));
    EXPECT_EQ(release, !m_list);
    m_list.Reset();
    EXPECT_EQ(0, HostRecord::alive);
  }
}

TEST_F(ChanInfoMgrStorage, SavedListLoadsBackEqual) {
  for (const BlockSize& row : kBlockSizes) {
    const auto list = MakeList(row.signalType);
    Random random(row.size);
    for (UINT i = 1; i <= 20; ++i) {
      const auto record = MakeRecord(row.signalType, i);
      Station station(row.signalType);
      station->lPhysicalChannel = static_cast<LONG>(random(1000));
      // The file keeps no frequency for ATSC.
      station->dwFrequency = row.size == 528 ? 0 : random(0x7FFFFFFF);
      record->SetStationInfo(station.Get());
      record->SetFavor(random(3));
      record->SetLock(static_cast<BOOL>(random(2)));
      ExpectHr(S_OK, record->SetChannelDspName(Wide("Channel " + std::to_string(i)).Get()));
      ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
    }
    ChannelSet set;
    ExpectHr(S_OK, list->Save(dom::kIidNode, set.Node()));
    const auto loaded = MakeList(row.signalType);
    ExpectHr(S_OK, loaded->Load(dom::kIidNode, set.Node()));
    ASSERT_EQ(20, set.Count());
    for (UINT i = 1; i <= 20; ++i) {
      ComPtr<IChannelInfo> before;
      ComPtr<IChannelInfo> after;
      ExpectHr(S_OK, list->GetChannelInfoByIndex(i, before.Receive()));
      ASSERT_EQ(S_OK, loaded->GetChannelInfoByIndex(i, after.Receive()));
      EXPECT_EQ(FrequencyOf(before.Get()), FrequencyOf(after.Get()));
      Bstr names[2];
      UINT favors[2] = {7, 8};
      BOOL locks[2] = {7, 8};
      before->GetChannelDspName(names[0].Receive());
      after->GetChannelDspName(names[1].Receive());
      before->GetFavor(&favors[0]);
      after->GetFavor(&favors[1]);
      before->GetLock(&locks[0]);
      after->GetLock(&locks[1]);
      ExpectText(names[0].View(), names[1].Get());
      EXPECT_EQ(favors[0], favors[1]);
      EXPECT_EQ(locks[0], locks[1]);
    }
  }
}

}  // namespace

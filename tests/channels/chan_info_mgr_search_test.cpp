// Counting, lookups and navigation.
#include "channels/channel_records.h"

namespace {

using Found = ComPtr<IChannelInfo>;

// One host record of a list, with index = place.
struct SearchRow {
  EServiceType serviceType;
  UINT favor = 0;
  HRESULT serviceTypeResult = S_OK;
};

class HostList {
 public:
  explicit HostList(const std::vector<SearchRow>& records)
      : m_list(MakeList(InputSignalDVBSatellite)) {
    for (const SearchRow& row : records) {
      HostRecord* raw = nullptr;
      const Found record = HostRecord::Make(&raw);
      raw->index = static_cast<UINT>(m_records.size() + 1);
      raw->serviceType = row.serviceType;
      raw->favor = row.favor;
      raw->serviceTypeResult = row.serviceTypeResult;
      m_records.push_back(raw);
      ExpectHr(S_OK, m_list->AddChannelInfo(record.Get()));
    }
    for (HostRecord* raw : m_records) raw->calls = 0;
  }
  HostRecord& operator[](std::size_t position) { return *m_records.at(position); }
  IChannelInfoMgr* operator->() { return m_list.Get(); }
  IChannelInfoMgr* Get() { return m_list.Get(); }

  // 0 for E_FAIL.
  UINT Next(UINT index, DWORD mask, BOOL available, BOOL looping) {
    UINT found = 4711;
    const HRESULT hr = m_list->FindNextChannel(index, &found, mask, available, looping);
    return Outcome(hr, found);
  }
  UINT Pre(UINT index, DWORD mask, BOOL available, BOOL looping) {
    UINT found = 4711;
    const HRESULT hr = m_list->FindPreChannel(index, &found, mask, available, looping);
    return Outcome(hr, found);
  }

 private:
  static UINT Outcome(HRESULT hr, UINT found) {
    if (hr == S_OK) return found;
    ExpectHr(E_FAIL, hr);
    EXPECT_EQ(4711u, found);
    return 0;
  }

  ComPtr<IChannelInfoMgr> m_list;
  std::vector<HostRecord*> m_records;
};

constexpr DWORD kTv = ServiceDigitalTV;
constexpr DWORD kRadio = ServiceDigitalRadio;
constexpr DWORD kAll = 0xFFFFFFFF;
constexpr EServiceType kTvType = ServiceDigitalTV;
constexpr EServiceType kRadioType = ServiceDigitalRadio;

TEST(ChanInfoMgrSearch, CountByMask) {
  HostList list({{kTvType}, {kRadioType}, {ServiceOthers}, {ServiceAll}, {ServiceUnknown}});
  EXPECT_EQ(0u, CountOf(list.Get(), 0));
  EXPECT_EQ(2u, CountOf(list.Get(), kTv));
  EXPECT_EQ(2u, CountOf(list.Get(), kRadio));
  EXPECT_EQ(3u, CountOf(list.Get(), kTv | kRadio));
  EXPECT_EQ(2u, CountOf(list.Get(), 0x10000000));
  EXPECT_EQ(4u, CountOf(list.Get(), kAll));
}

TEST(ChanInfoMgrSearch, AnalogChannelsMatchEveryMaskButZero) {
  for (const InputSignalType signalType :
       {InputSignalAnalogAntenna, InputSignalAnalogCable, InputSignalFMRadio}) {
    const auto list = MakeList(signalType);
    for (UINT i = 1; i <= 5; ++i) list->AddChannelInfo(MakeRecord(signalType, i).Get());
    EXPECT_EQ(0u, CountOf(list.Get(), 0));
    EXPECT_EQ(5u, CountOf(list.Get(), kAll));
    EXPECT_EQ(5u, CountOf(list.Get(), kRadio));
  }
}

// Records that name no service type are judged by the one before them; the first as ServiceAll.
TEST(ChanInfoMgrSearch, CountCarriesTheServiceType) {
  HostList list({{ServiceUnknown, 0, S_FALSE},
                 {kTvType},
                 {ServiceUnknown, 0, S_FALSE},
                 {ServiceUnknown, 0, E_FAIL},
                 {kRadioType},
                 {ServiceUnknown, 0, E_FAIL}});
  EXPECT_EQ(4u, CountOf(list.Get(), kTv));
  EXPECT_EQ(3u, CountOf(list.Get(), kRadio));
  EXPECT_EQ(6u, CountOf(list.Get(), kAll));
  EXPECT_EQ(0u, CountOf(list.Get(), 0));
  EXPECT_EQ(1u, CountOf(list.Get(), ServiceAnalogTV));
}

TEST(ChanInfoMgrSearch, OneSegmentListsAreCountableAndNavigable) {
  for (const InputSignalType signalType :
       {InputSignalISDBTerrestrialOneSeg, InputSignalISDBTerrestrial, InputSignalDVBHandheld}) {
    const auto list = MakeList(signalType);
    for (UINT i = 1; i <= 3; ++i) list->AddChannelInfo(MakeRecord(signalType, i).Get());
    EXPECT_EQ(3u, CountOf(list.Get(), kTv));
    EXPECT_EQ(0u, CountOf(list.Get(), 0));
    UINT index = 0;
    ExpectHr(S_OK, list->FindNextChannel(1, &index, kTv, 0, 0));
    EXPECT_EQ(2u, index);
    ExpectHr(S_OK, list->FindPreChannel(1, &index, kTv, 0, 1));
    EXPECT_EQ(3u, index);
  }
}

TEST(ChanInfoMgrSearch, ByNumberAndByIndexFindTheFirst) {
  const auto list = MakeList(InputSignalAnalogCable);
  const auto late = MakeRecord(InputSignalAnalogCable, 9, 70);
  const auto first = MakeRecord(InputSignalAnalogCable, 4, 70);
  const auto other = MakeRecord(InputSignalAnalogCable, 6, 60);
  for (const auto& record : {late, first, other}) list->AddChannelInfo(record.Get());
  Found found;
  ExpectHr(S_OK, list->GetChannelInfoByNo(70, found.Receive()));
  EXPECT_EQ(first.Get(), found.Get());
  ExpectRefCount(3, first.Get());
  ExpectHr(S_OK, list->GetChannelInfoByIndex(9, found.Receive()));
  EXPECT_EQ(late.Get(), found.Get());
  ExpectRefCount(3, late.Get());
  // The stored index, not the place.
  found.Reset();
  ExpectHr(E_FAIL, list->GetChannelInfoByIndex(1, found.Receive()));
  ExpectHr(E_FAIL, list->GetChannelInfoByNo(71, found.Receive()));
  EXPECT_EQ(nullptr, found.Get());
}

TEST(ChanInfoMgrSearch, LookupsPassOverRecordsThatDoNotTell) {
  HostList list({{kTvType}, {kTvType}});
  list[0].numberResult = E_FAIL;
  list[0].indexResult = E_FAIL;
  list[1].index = 0;
  Found found;
  ExpectHr(S_OK, list->GetChannelInfoByNo(0, found.Receive()));
  EXPECT_EQ(&list[1], found.Get());
  ExpectHr(S_OK, list->GetChannelInfoByIndex(0, found.Receive()));
  EXPECT_EQ(&list[1], found.Get());
}

TEST(ChanInfoMgrSearch, LookupsInAnEmptyList) {
  const auto list = MakeList(InputSignalAnalogCable);
  Station station(InputSignalAnalogCable);
  Found found;
  ExpectHr(E_FAIL, list->GetChannelInfoByNo(0, found.Receive()));
  ExpectHr(E_FAIL, list->GetChannelInfoByIndex(0, found.Receive()));
  ExpectHr(E_FAIL, list->GetChannelInfoByStation(station.Get(), found.Receive()));
  UINT index = 5;
  ExpectHr(E_FAIL, list->FindNextChannel(0, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindNextChannel(1, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindPreChannel(0, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindPreChannel(1, &index, kAll, 0, 1));
  EXPECT_EQ(5u, index);
}

TEST(ChanInfoMgrSearch, OneRecordIsNotNavigable) {
  HostList list({{kTvType, 1}});
  for (const BOOL looping : {0, 1}) {
    EXPECT_EQ(0u, list.Next(0, kAll, 0, looping));
    EXPECT_EQ(0u, list.Next(1, kAll, 0, looping));
    EXPECT_EQ(0u, list.Pre(1, kAll, 0, looping));
  }
  UINT index = 0;
  ExpectHr(E_INVALIDARG, list->FindNextChannel(2, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindPreChannel(0, &index, kAll, 0, 1));
}

TEST(ChanInfoMgrSearch, IndexesOutsideTheList) {
  HostList list({{kTvType}, {kTvType}, {kTvType}});
  UINT index = 5;
  ExpectHr(E_INVALIDARG, list->FindNextChannel(4, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindNextChannel(0xFFFFFFFF, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindPreChannel(4, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindPreChannel(0, &index, kAll, 0, 1));
  ExpectHr(E_INVALIDARG, list->FindPreChannel(0xFFFFFFFF, &index, kAll, 0, 1));
  EXPECT_EQ(5u, index);
}

TEST(ChanInfoMgrSearch, NextStepsThroughTheList) {
  HostList list({{kTvType}, {kRadioType}, {kTvType}, {kRadioType}});
  EXPECT_EQ(1u, list.Next(0, kAll, 0, 0));
  EXPECT_EQ(2u, list.Next(1, kAll, 0, 0));
  EXPECT_EQ(3u, list.Next(1, kTv, 0, 0));
  EXPECT_EQ(4u, list.Next(3, kAll, 0, 0));
  EXPECT_EQ(0u, list.Next(4, kAll, 0, 0));
  EXPECT_EQ(1u, list.Next(4, kAll, 0, 1));
  EXPECT_EQ(0u, list.Next(3, kTv, 0, 0));
  EXPECT_EQ(1u, list.Next(3, kTv, 0, 1));
  EXPECT_EQ(2u, list.Next(4, kRadio, 0, -1));
  EXPECT_EQ(0u, list.Next(1, 0, 0, 1));
}

TEST(ChanInfoMgrSearch, PreStepsThroughTheList) {
  HostList list({{kTvType}, {kRadioType}, {kTvType}, {kRadioType}});
  EXPECT_EQ(3u, list.Pre(4, kAll, 0, 0));
  EXPECT_EQ(2u, list.Pre(4, kRadio, 0, 0));
  EXPECT_EQ(1u, list.Pre(3, kTv, 0, 0));
  // From the first there is nothing in front.
  EXPECT_EQ(0u, list.Pre(1, kAll, 0, 0));
  EXPECT_EQ(4u, list.Pre(1, kAll, 0, 1));
  EXPECT_EQ(3u, list.Pre(1, kTv, 0, 1));
  EXPECT_EQ(0u, list.Pre(2, kRadio, 0, 0));
  EXPECT_EQ(0u, list.Pre(2, 0, 0, 1));
}

TEST(ChanInfoMgrSearch, LoopingFindsTheCurrentRecordItself) {
  HostList list({{kTvType}, {kRadioType}, {kTvType}});
  EXPECT_EQ(2u, list.Next(2, kRadio, 0, 1));
  EXPECT_EQ(2u, list.Pre(2, kRadio, 0, 1));
  EXPECT_EQ(0u, list.Next(2, kRadio, 0, 0));
  EXPECT_EQ(0u, list.Pre(2, kRadio, 0, 0));
}

TEST(ChanInfoMgrSearch, NextFromZeroCoversTheListOnce) {
  HostList list({{kTvType}, {kTvType}});
  EXPECT_EQ(0u, list.Next(0, kRadio, 0, 1));
  // Each was asked for its service type once: there was no second round.
  EXPECT_EQ(1, list[0].calls);
  EXPECT_EQ(1, list[1].calls);
  EXPECT_EQ(0u, list.Next(1, kRadio, 0, 1));
  EXPECT_EQ(2, list[0].calls);
  EXPECT_EQ(3, list[1].calls);
}

TEST(ChanInfoMgrSearch, AvailableMeansAnyFavorite) {
  HostList list({{kTvType, 0}, {kTvType, 7}, {kTvType, 0}, {kTvType, 0xFFFFFFFF}});
  EXPECT_EQ(2u, list.Next(0, kAll, 1, 0));
  EXPECT_EQ(4u, list.Next(2, kAll, 1, 0));
  EXPECT_EQ(0u, list.Next(4, kAll, 1, 0));
  EXPECT_EQ(2u, list.Next(4, kAll, -1, 1));
  EXPECT_EQ(2u, list.Pre(4, kAll, 1, 0));
  EXPECT_EQ(4u, list.Pre(2, kAll, 1, 1));
  EXPECT_EQ(1u, list.Next(0, kAll, 0, 0));
  // One that does not tell is none.
  list[1].favorResult = E_FAIL;
  EXPECT_EQ(4u, list.Next(0, kAll, 1, 0));
}

// The service type goes from record to record in the direction of the search, through records that
// are no favourites, and into the second round.
TEST(ChanInfoMgrSearch, NavigationCarriesTheServiceType) {
  HostList list(
      {{kRadioType, 0}, {ServiceUnknown, 1, E_FAIL}, {kTvType, 0}, {ServiceUnknown, 1, S_FALSE}});
  EXPECT_EQ(2u, list.Next(0, kRadio, 1, 0));
  EXPECT_EQ(4u, list.Next(0, kTv, 1, 0));
  EXPECT_EQ(2u, list.Pre(4, kTv, 1, 0));
  // The first that is asked, and says nothing, counts as everything.
  EXPECT_EQ(2u, list.Next(1, ServiceAnalogTV, 1, 0));
  EXPECT_EQ(4u, list.Next(3, kRadio, 1, 0));
  EXPECT_EQ(0u, list.Next(2, ServiceAnalogTV, 1, 1));

  HostList looping({{ServiceUnknown, 0, E_FAIL}, {kRadioType}, {kTvType}});
  // From 2: TV; the second round starts with record 1, judged by that TV.
  EXPECT_EQ(0u, looping.Next(2, kRadio, 0, 0));
  EXPECT_EQ(2u, looping.Next(2, kRadio, 0, 1));
  looping[1].serviceType = ServiceOthers;
  looping[2].favor = 0;
  looping[0].favor = 1;
  EXPECT_EQ(1u, looping.Next(2, kTv, 1, 1));
  EXPECT_EQ(0u, looping.Next(2, kRadio, 1, 1));
}

TEST(ChanInfoMgrSearch, NavigationAnswersTheStoredIndex) {
  HostList list({{kTvType}, {kTvType}, {kTvType}});
  list[1].index = 77;
  EXPECT_EQ(77u, list.Next(1, kAll, 0, 0));
  EXPECT_EQ(77u, list.Pre(3, kAll, 0, 0));
  // One that does not tell its index is answered as 0.
  list[1].indexResult = E_FAIL;
  UINT index = 5;
  ExpectHr(S_OK, list->FindNextChannel(1, &index, kAll, 0, 0));
  EXPECT_EQ(0u, index);
}

}  // namespace

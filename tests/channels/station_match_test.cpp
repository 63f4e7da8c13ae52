#include "channels/station_match.h"

#include "channels/channel_records.h"

namespace {

using Found = ComPtr<IChannelInfo>;

// What tells two stations of a list apart.
struct MatchRow {
  InputSignalType listType;
  bool physicalChannel;
  bool frequency;
  bool transportStream;
  std::vector<std::size_t> words;
};
const MatchRow kRows[] = {
    {InputSignalAnalogAntenna, true, false, false, {}},
    {InputSignalAnalogCable, true, false, false, {}},
    {InputSignalFMRadio, false, true, false, {}},
    {InputSignalATSCAntenna, true, false, false, {4, 8}},
    {InputSignalATSCCable, true, false, false, {4, 8}},
    {InputSignalDVBSatellite, false, false, true, {12, 4, 972}},
    {InputSignalDVBTerrestrial, false, false, true, {12, 4}},
    {InputSignalDVBHandheld, false, false, true, {12, 4}},
    {InputSignalTDMBMobile, false, false, false, {4, 796}},
    {InputSignalISDBTerrestrialOneSeg, false, false, false, {2572}},
};

// Every byte and every field has a value of its own.
void FillStation(Station& station) {
  for (std::size_t i = 0; i < station.Block().size(); ++i) {
    station.Block()[i] = static_cast<BYTE>(i * 7 + 3);
  }
  station->lPhysicalChannel = 21;
  station->dwFrequency = 506'000;
  station->lTSID = 8468;
  station->lCountry = 49;
  station->lOffsetFreq = 166;
}

class StationMatch : public testing::TestWithParam<MatchRow> {
 protected:
  StationMatch() : m_list(MakeList(GetParam().listType)), m_probe(GetParam().listType) {
    FillStation(m_probe);
  }

  Found AddOurs(Station& station) {
    const Found record = MakeRecord(GetParam().listType, 1);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    ExpectHr(S_OK, m_list->AddChannelInfo(record.Get()));
    return record;
  }
  Found AddHosts(Station& station) {
    HostRecord* raw = nullptr;
    const Found record = HostRecord::Make(&raw);
    raw->station = *station.Get();
    raw->block = station.Block();
    ExpectHr(S_OK, m_list->AddChannelInfo(record.Get()));
    return record;
  }
  bool Finds(Station& probe) {
    Found found;
    const HRESULT hr = m_list->GetChannelInfoByStation(probe.Get(), found.Receive());
    if (hr != S_OK) ExpectHr(E_FAIL, hr);
    EXPECT_EQ(hr == S_OK, static_cast<bool>(found));
    return hr == S_OK;
  }

  ComPtr<IChannelInfoMgr> m_list;
  Station m_probe;
};

INSTANTIATE_TEST_SUITE_P(AllTypes, StationMatch, testing::ValuesIn(kRows), [](const auto& row) {
  return "Type" + std::to_string(row.param.listType);
});

TEST_P(StationMatch, FindsTheFirstOfEquals) {
  Station station(GetParam().listType);
  FillStation(station);
  const Found first = AddOurs(station);
  const Found second = AddOurs(station);  // goes in front: the same index
  Found found;
  ExpectHr(S_OK, m_list->GetChannelInfoByStation(m_probe.Get(), found.Receive()));
  EXPECT_EQ(second.Get(), found.Get());
  ExpectRefCount(3, second.Get());
  ExpectRefCount(2, first.Get());
}

TEST_P(StationMatch, ComparesExactlyItsFields) {
  for (const bool ours : {true, false}) {
    m_list->Clear();
    Station station(GetParam().listType);
    FillStation(station);
    const Found record = ours ? AddOurs(station) : AddHosts(station);
    ASSERT_TRUE(Finds(m_probe));
    const auto differs = [&](auto& field) {
      const auto old = field;
      field = static_cast<std::remove_reference_t<decltype(field)>>(field + 1);
      const bool found = Finds(m_probe);
      field = old;
      return !found;
    };
    _StationTuneInfo& probe = *m_probe.Get();
    EXPECT_EQ(GetParam().physicalChannel, differs(probe.lPhysicalChannel));
    EXPECT_EQ(GetParam().frequency, differs(probe.dwFrequency));
    EXPECT_EQ(GetParam().transportStream, differs(probe.lTSID));
    EXPECT_FALSE(differs(probe.lCountry));
    EXPECT_FALSE(differs(probe.lOffsetFreq));
    for (std::size_t i = 0; i < m_probe.Block().size(); ++i) {
      bool counts = false;
      for (const std::size_t word : GetParam().words) counts |= i >= word && i < word + 4;
      ASSERT_EQ(counts, differs(m_probe.Block()[i])) << "byte " << i;
    }
    // The probe's own type is not looked at.
    probe.InputSignal = InputSignalUnknown;
    EXPECT_TRUE(Finds(m_probe));
  }
}

TEST_P(StationMatch, ProbesThatEndBeforeTheWordsMatchNothing) {
  Station station(GetParam().listType);
  FillStation(station);
  const Found record = AddOurs(station);
  std::size_t needed = 0;
  for (const std::size_t word : GetParam().words) needed = std::max(needed, word + 4);
  for (std::size_t length = 0; length <= m_probe.Block().size(); ++length) {
    if (length > 20 && (length < needed - 5 || length > needed + 5)) continue;
    Station shortProbe(GetParam().listType, length);
    FillStation(shortProbe);
    if (length == 0) shortProbe->pbInformation = nullptr;
    EXPECT_EQ(length >= needed, Finds(shortProbe)) << length;
  }
  m_probe->pbInformation = nullptr;  // whatever its count says
  EXPECT_EQ(needed == 0, Finds(m_probe));
}

TEST_P(StationMatch, RecordsThatEndBeforeTheWordsMatchNothing) {
  std::size_t needed = 0;
  for (const std::size_t word : GetParam().words) needed = std::max(needed, word + 4);
  for (const std::size_t length : {std::size_t{0}, std::size_t{3}, std::size_t{7}, std::size_t{8},
                                   needed - 1, needed, needed + 1}) {
    if (length > 5000) continue;
    m_list->Clear();
    Station station(GetParam().listType, length);
    FillStation(station);
    const Found record = AddHosts(station);
    EXPECT_EQ(length >= needed, Finds(m_probe)) << length;
  }
}

// A record of ours has its whole block, zero behind what the host filled.
TEST_P(StationMatch, ShortStationsOfOursReadAsZero) {
  Station station(GetParam().listType, 2);
  FillStation(station);
  station->cbInformation = 0;
  const Found record = AddOurs(station);
  EXPECT_EQ(GetParam().words.empty(), Finds(m_probe));
  m_probe.Fill(0);
  EXPECT_TRUE(Finds(m_probe));
}

TEST_P(StationMatch, RecordsWithoutAStation) {
  const Found record = MakeRecord(InputSignalISDBCable, 1);
  ExpectHr(S_OK, m_list->AddChannelInfo(record.Get()));
  m_probe.Fill(0);
  m_probe->lPhysicalChannel = 0;
  m_probe->dwFrequency = 0;
  m_probe->lTSID = 0;
  // The type has no block, so the station comes out zeroed: enough where no word is needed.
  EXPECT_EQ(GetParam().words.empty(), Finds(m_probe));
}

// Two that both say nothing say nothing alike.
TEST_P(StationMatch, NothingMatchesWhereBothHaveNoWords) {
  Station without(GetParam().listType, 0);
  FillStation(without);
  const Found record = AddHosts(without);
  without->pbInformation = nullptr;
  EXPECT_EQ(GetParam().words.empty(), Finds(without));
}

TEST_P(StationMatch, RecordsThatFailArePassedOver) {
  Station station(GetParam().listType);
  FillStation(station);
  const Found good = AddOurs(station);
  const Found bad = AddHosts(station);  // in front
  static_cast<HostRecord*>(bad.Get())->stationResult = E_FAIL;
  Found found;
  ExpectHr(S_OK, m_list->GetChannelInfoByStation(m_probe.Get(), found.Receive()));
  EXPECT_EQ(good.Get(), found.Get());
}

TEST(StationMatchLists, TypesThatNeverMatch) {
  Station station(InputSignalAnalogCable);
  FillStation(station);
  for (const InputSignalType listType : kAllSignalTypes) {
    if (BlockSizeOf(listType) != 0) continue;
    const ComPtr<IChannelInfoMgr> list = MakeList(listType);
    const Found record = MakeRecord(InputSignalAnalogCable, 1);
    record->SetStationInfo(station.Get());
    list->AddChannelInfo(record.Get());
    Found found;
    ExpectHr(E_FAIL, list->GetChannelInfoByStation(station.Get(), found.Receive()));
  }
}

// The list's type decides, not the record's.
TEST(StationMatchLists, ListTypeDecides) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  Station station(InputSignalAnalogCable);
  FillStation(station);
  const Found record = MakeRecord(InputSignalAnalogCable, 1);
  record->SetStationInfo(station.Get());
  list->AddChannelInfo(record.Get());
  Found found;
  Station probe(InputSignalFMRadio);
  probe->dwFrequency = 506'000;
  ExpectHr(S_OK, list->GetChannelInfoByStation(probe.Get(), found.Receive()));
  list->SetSignalType(InputSignalAnalogCable);
  ExpectHr(E_FAIL, list->GetChannelInfoByStation(probe.Get(), found.Receive()));
  // A record whose type was changed shows the block that GetStationInfo would give.
  list->SetSignalType(InputSignalATSCCable);
  record->SetSignalType(InputSignalATSCCable);
  ExpectHr(S_OK, list->GetChannelInfoByStation(StationCopy(record.Get()).Get(), found.Receive()));
}

TEST(StationMatchLists, CopiesOfTheStationFindTheirRecord) {
  for (const MatchRow& row : kRows) {
    const ComPtr<IChannelInfoMgr> list = MakeList(row.listType);
    Station station(row.listType);
    FillStation(station);
    const Found record = MakeRecord(row.listType, 1);
    record->SetStationInfo(station.Get());
    list->AddChannelInfo(record.Get());
    StationCopy copy(record.Get());
    Found found;
    ExpectHr(S_OK, list->GetChannelInfoByStation(copy.Get(), found.Receive()));
    EXPECT_EQ(record.Get(), found.Get());
  }
}

}  // namespace

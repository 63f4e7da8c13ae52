// Random operations on a list and on a plain vector that follows the same rules.
#include <algorithm>

#include "channels/channel_records.h"
#include "support/channel_list_model.h"
#include "support/random.h"

namespace {

using channel_list_model::Entry;
using channel_list_model::kNone;
using channel_list_model::Model;

// One list with its model. Every record is held here as well, to check the references.
class Pair {
 public:
  explicit Pair(std::uint32_t seed) : m_random(seed), m_list(MakeList(InputSignalDVBTerrestrial)) {}

  void Step() {
    switch (m_random(12)) {
      case 0:
      case 1:
      case 2:
        return Add();
      case 3:
        return Remove();
      case 4:
        return Move();
      case 5:
        return SortByNumber();
      case 6:
        return SetIndex();
      case 7:
        return Lookup();
      case 8:
        return CountAll();
      case 9:
      case 10:
        return Navigate();
      default:
        return Dirty();
    }
  }
  void Check() {
    std::vector<int> uses(m_entries.size());
    for (const Entry* entry : m_model.entries) ++uses[static_cast<std::size_t>(entry->id)];
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
      ASSERT_EQ(static_cast<ULONG>(uses[i]) + 1, References(m_records[i].Get()));
      UINT index = kNone;
      const HRESULT hr = m_records[i]->GetChannelIndex(&index);
      ASSERT_EQ(m_entries[i]->index == kNone ? E_FAIL : S_OK, hr);
      ASSERT_EQ(m_entries[i]->index, index);
    }
    ASSERT_EQ(m_model.entries.size(), CountOf(m_list.Get()));
  }

 private:
  static ULONG References(IChannelInfo* record) {
    record->AddRef();
    return record->Release();
  }
  // Half of the records name no service type.
  void Add() {
    auto entry = std::make_unique<Entry>();
    entry->id = static_cast<int>(m_entries.size());
    entry->index = m_random(20) == 0 ? kNone : m_random(30);
    entry->number = m_random(20);
    entry->favor = m_random(2);
    entry->names = m_random(2) != 0;
    ComPtr<IChannelInfo> record;
    ExpectHr(S_OK, m_list->CreateChannelInfo(record.Receive()));
    Station station(InputSignalDVBTerrestrial);
    constexpr std::uint32_t kCodes[] = {1, 2, 12, 99};
    constexpr std::int32_t kTypes[] = {ServiceDigitalTV, ServiceDigitalRadio, ServiceDataBroadcast,
                                       ServiceOthers};
    const std::size_t which = m_random(4);
    station.Word(0, kCodes[which]);
    entry->serviceType = kTypes[which];
    record->SetStationInfo(station.Get());
    record->SetChannelNo(entry->number);
    record->SetFavor(entry->favor);
    record->SetChannelIndex(entry->index);
    if (!entry->names) record->SetSignalType(InputSignalISDBTerrestrial);
    record->SetDirty(0);
    ExpectHr(m_model.Add(entry.get()) ? S_OK : E_FAIL, m_list->AddChannelInfo(record.Get()));
    m_entries.push_back(std::move(entry));
    m_records.push_back(std::move(record));
  }
  Entry* Any() {
    const std::size_t count = m_model.entries.size();
    return count == 0 ? nullptr : m_model.entries[m_random(static_cast<std::uint32_t>(count))];
  }
  IChannelInfo* RecordOf(const Entry* entry) {
    return m_records[static_cast<std::size_t>(entry->id)].Get();
  }
  void Remove() {
    Entry* entry = Any();
    if (entry == nullptr) return;
    m_model.Remove(entry);
    ExpectHr(S_OK, m_list->RemoveChannelInfo(RecordOf(entry)));
  }
  void Move() {
    const UINT from = m_random(25);
    const UINT to = m_random(25);
    ExpectHr(m_model.Move(from, to), m_list->MoveChannel(from, to));
  }
  void SortByNumber() {
    // Distinct numbers: the order of equals is the sort's own test.
    for (Entry* entry : m_model.entries) {
      entry->number = static_cast<UINT>(entry->id) * 7919 % 104729;
      RecordOf(entry)->SetChannelNo(entry->number);
    }
    const BOOL ascending = static_cast<BOOL>(m_random(2));
    std::sort(m_model.entries.begin(), m_model.entries.end(),
              [](const Entry* a, const Entry* b) { return a->number < b->number; });
    m_model.Renumber(ascending != 0);
    ExpectHr(S_OK, m_list->SortChannel(SortChannelByNo, ascending));
  }
  void SetIndex() {
    Entry* entry = Any();
    if (entry == nullptr) return;
    entry->index = m_random(10) == 0 ? kNone : m_random(30);
    RecordOf(entry)->SetChannelIndex(entry->index);
    RecordOf(entry)->SetDirty(0);
  }
  void ExpectFound(Entry* expected, HRESULT hr, const ComPtr<IChannelInfo>& found) {
    ExpectHr(expected == nullptr ? E_FAIL : S_OK, hr);
    EXPECT_EQ(expected == nullptr ? nullptr : RecordOf(expected), found.Get());
  }
  void Lookup() {
    const UINT key = m_random(30);
    ComPtr<IChannelInfo> found;
    HRESULT hr = m_list->GetChannelInfoByIndex(key, found.Receive());
    ExpectFound(m_model.ByIndex(key), hr, found);
    hr = m_list->GetChannelInfoByNo(key, found.Receive());
    ExpectFound(m_model.ByNumber(key), hr, found);
  }
  DWORD Mask() {
    constexpr DWORD kMasks[] = {0, 2, 8, 10, 0xF0, 0x80000000, 0xFFFFFFFF, 1};
    return kMasks[m_random(8)];
  }
  void CountAll() {
    const DWORD mask = Mask();
    EXPECT_EQ(m_model.Count(mask), CountOf(m_list.Get(), mask));
  }
  void Navigate() {
    const UINT from = m_random(static_cast<std::uint32_t>(m_model.entries.size()) + 2);
    const DWORD mask = Mask();
    const BOOL available = static_cast<BOOL>(m_random(2));
    const BOOL looping = static_cast<BOOL>(m_random(2));
    const bool next = m_random(2) != 0;
    UINT expected = 4711;
    const HRESULT hr = m_model.Find(next, from, mask, available != 0, looping != 0, &expected);
    UINT found = 4711;
    ExpectHr(hr, next ? m_list->FindNextChannel(from, &found, mask, available, looping)
                      : m_list->FindPreChannel(from, &found, mask, available, looping));
    EXPECT_EQ(expected, found);
  }
  void Dirty() {
    if (m_model.dirty) {
      EXPECT_EQ(1, DirtyOf(m_list.Get()));
    }
    for (const auto& record : m_records) record->SetDirty(0);
    m_list->SetDirty(0);
    m_model.dirty = false;
    EXPECT_EQ(0, DirtyOf(m_list.Get()));
  }

  Random m_random;
  ComPtr<IChannelInfoMgr> m_list;
  Model m_model;
  std::vector<std::unique_ptr<Entry>> m_entries;
  std::vector<ComPtr<IChannelInfo>> m_records;
};

TEST(ChanInfoMgrModel, RandomOperations) {
  for (std::uint32_t seed = 1; seed <= 200; ++seed) {
    Pair pair(seed);
    for (int step = 0; step < 120; ++step) {
      pair.Step();
      if (testing::Test::HasFailure()) FAIL() << "seed " << seed << ", step " << step;
    }
    pair.Check();
    if (testing::Test::HasFatalFailure()) FAIL() << "seed " << seed;
  }
}

}  // namespace

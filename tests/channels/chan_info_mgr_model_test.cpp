// Random operations on a list and on a plain vector that follows the same rules.
#include <algorithm>
#include <optional>

#include "channels/channel_records.h"
#include "support/random.h"

namespace {

constexpr UINT kNone = 0xFFFFFFFF;

struct Entry {
  int id = 0;
  UINT index = 0;
  UINT number = 0;
  UINT favor = 0;
  std::int32_t serviceType = 0;  // as the mask sees it; 0: names none
  bool names = false;
};

class Model {
 public:
  std::vector<Entry*> entries;
  bool dirty = false;

  bool Add(Entry* entry) {
    if (entry->index == kNone) return false;
    std::size_t place = 0;
    while (place < entries.size() &&
           (entries[place]->index == kNone || entries[place]->index < entry->index)) {
      ++place;
    }
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(place), entry);
    dirty = true;
    return true;
  }
  void Remove(Entry* entry) {
    entries.erase(std::find(entries.begin(), entries.end(), entry));
    Renumber(true);
  }
  void Renumber(bool up) {
    UINT number = 0;
    const UINT count = static_cast<UINT>(entries.size());
    for (Entry* entry : entries) {
      ++number;
      entry->index = up ? number : count + 1 - number;
    }
    dirty = true;
  }
  Entry* ByIndex(UINT index) {
    for (Entry* entry : entries) {
      if (entry->index == index && index != kNone) return entry;
    }
    return nullptr;
  }
  Entry* ByNumber(UINT number) {
    for (Entry* entry : entries) {
      if (entry->number == number) return entry;
    }
    return nullptr;
  }
  UINT Count(DWORD mask) {
    UINT count = 0;
    std::int32_t current = -1;
    for (Entry* entry : entries) {
      if (entry->names) current = entry->serviceType;
      if ((static_cast<DWORD>(current) & mask) != 0) ++count;
    }
    return count;
  }
  HRESULT Move(UINT from, UINT to) {
    if (from == to) return E_INVALIDARG;
    Entry* entry = ByIndex(from);
    if (entry == nullptr) return E_FAIL;
    Remove(entry);
    entry->index = to;
    Add(entry);
    Renumber(true);
    return S_OK;
  }
  // Places in the order in which they are asked: this round, then the other one.
  HRESULT Find(bool next, UINT from, DWORD mask, bool available, bool looping, UINT* found) {
    const int n = static_cast<int>(entries.size());
    const int start = static_cast<int>(from);
    if (start > n || (!next && start == 0)) return E_INVALIDARG;
    if (n < 2) return E_FAIL;
    std::vector<int> places;
    if (next) {
      for (int i = start; i < n; ++i) places.push_back(i);
      for (int i = 0; looping && start != 0 && i < n; ++i) places.push_back(i);
    } else {
      for (int i = start - 2; i >= 0; --i) places.push_back(i);
      for (int i = n - 1; looping && i >= 0; --i) places.push_back(i);
    }
    std::int32_t current = -1;
    for (const int place : places) {
      const Entry* entry = entries[static_cast<std::size_t>(place)];
      if (entry->names) current = entry->serviceType;
      if ((static_cast<DWORD>(current) & mask) == 0) continue;
      if (available && entry->favor == 0) continue;
      *found = entry->index == kNone ? 0 : entry->index;
      return S_OK;
    }
    return E_FAIL;
  }
};

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

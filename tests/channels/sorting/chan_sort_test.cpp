#include "channels/sorting/chan_sort.h"

#include <utility>

#include "channels/channel_records.h"
#include "support/random.h"

namespace {

struct Key {
  UINT number;
  std::int32_t serviceType;
  int id;
  bool operator==(const Key&) const = default;
};

class SortedRecords {
 public:
  void Add(UINT number, std::int32_t serviceType) {
    HostRecord* raw = nullptr;
    m_records.push_back(HostRecord::Make(&raw));
    raw->number = number;
    raw->serviceType = static_cast<EServiceType>(serviceType);
    raw->index = static_cast<UINT>(m_records.size());
  }
  chan_sort::Records& Get() { return m_records; }
  std::vector<Key> Keys() const {
    std::vector<Key> keys;
    for (const auto& record : m_records) {
      const auto* host = static_cast<const HostRecord*>(record.Get());
      keys.push_back({host->number, host->serviceType, static_cast<int>(host->index)});
    }
    return keys;
  }

 private:
  chan_sort::Records m_records;
};

TEST(ChanSort, ByNumber) {
  SortedRecords records;
  for (const UINT number : {7u, 0xFFFFFFFFu, 0u, 7u}) records.Add(number, 0);
  chan_sort::ByNumber(records.Get());
  EXPECT_EQ((std::vector<Key>{{0, 0, 3}, {7, 0, 1}, {7, 0, 4}, {0xFFFFFFFF, 0, 2}}),
            records.Keys());
}

TEST(ChanSort, ByServiceTypeAscending) {
  SortedRecords records;
  records.Add(1, ServiceDigitalRadio);
  records.Add(2, ServiceOthers);
  records.Add(3, ServiceDigitalTV);
  records.Add(4, ServiceAll);
  chan_sort::ByServiceType(records.Get(), 1);
  // By service type: Others (4th), All, TV, Radio, that is 2 4 3 1; the combined pass then takes a
  // record to the front or back past neighbours that have a higher number and a lower type.
  EXPECT_EQ((std::vector<Key>{{1, 8, 1}, {2, ServiceOthers, 2}, {3, 2, 3}, {4, -1, 4}}),
            records.Keys());
}

TEST(ChanSort, ByServiceTypeDescending) {
  SortedRecords records;
  records.Add(4, ServiceDigitalRadio);
  records.Add(3, ServiceOthers);
  records.Add(1, ServiceDigitalTV);
  chan_sort::ByServiceType(records.Get(), 0);
  // After two passes: 8, 2, Others with numbers 4, 1, 3; none has a higher number and a lower type
  // than the one in front but 3, past 1.
  EXPECT_EQ((std::vector<Key>{{4, 8, 1}, {3, ServiceOthers, 2}, {1, 2, 3}}), records.Keys());
}

// Up to 32 records every pass is an insertion sort: each record from the second goes to the front
// when it is before the first, else back past the neighbours that it is before.
std::vector<Key> Insertion(std::vector<Key> keys, bool (*before)(const Key&, const Key&)) {
  for (std::size_t i = 1; i < keys.size(); ++i) {
    const Key key = keys[i];
    std::size_t to = i;
    if (before(key, keys[0])) {
      to = 0;
    } else {
      while (to > 0 && before(key, keys[to - 1])) --to;
    }
    keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(i));
    keys.insert(keys.begin() + static_cast<std::ptrdiff_t>(to), key);
  }
  return keys;
}

TEST(ChanSort, ThreePassesOnSmallLists) {
  const auto byNumber = [](const Key& a, const Key& b) { return a.number < b.number; };
  const auto typeUp = [](const Key& a, const Key& b) { return a.serviceType < b.serviceType; };
  const auto typeDown = [](const Key& a, const Key& b) { return a.serviceType > b.serviceType; };
  const auto bothUp = [](const Key& a, const Key& b) {
    return a.number < b.number && a.serviceType > b.serviceType;
  };
  const auto bothDown = [](const Key& a, const Key& b) {
    return a.number > b.number && a.serviceType < b.serviceType;
  };
  constexpr std::int32_t kTypes[] = {ServiceOthers,       ServiceAll,          ServiceAnalogTV,
                                     ServiceDigitalTV,    ServiceDigitalAudio, ServiceDigitalRadio,
                                     ServiceDataBroadcast};
  Random random(6);
  for (int round = 0; round < 400; ++round) {
    SortedRecords records;
    const unsigned count = random(33);
    for (unsigned i = 0; i < count; ++i) records.Add(random(20), kTypes[random(7)]);
    const std::vector<Key> keys = Insertion(records.Keys(), byNumber);
    const bool up = round % 2 != 0;
    const std::vector<Key> expected = up ? Insertion(Insertion(keys, typeUp), bothUp)
                                         : Insertion(Insertion(keys, typeDown), bothDown);
    chan_sort::ByServiceType(records.Get(), up ? 3 : 0);
    ASSERT_EQ(expected, records.Keys()) << round;
  }
}

TEST(ChanSort, ValuesThatAreNotGivenCountAsZero) {
  SortedRecords records;
  records.Add(5, ServiceDigitalTV);
  records.Add(9, ServiceDigitalTV);
  static_cast<HostRecord*>(records.Get()[1].Get())->numberResult = E_FAIL;
  chan_sort::ByNumber(records.Get());
  EXPECT_EQ(9u, records.Keys()[0].number);

  SortedRecords typed;
  typed.Add(1, ServiceDigitalTV);
  typed.Add(1, ServiceDigitalRadio);
  static_cast<HostRecord*>(typed.Get()[1].Get())->serviceTypeResult = E_FAIL;
  chan_sort::ByServiceType(typed.Get(), 1);
  EXPECT_EQ(ServiceDigitalRadio, typed.Keys()[0].serviceType);
}

TEST(ChanSort, LargeListsKeepEveryRecord) {
  Random random(7);
  SortedRecords records;
  for (int i = 0; i < 3000; ++i) records.Add(random(500), static_cast<int>(random(9)));
  std::vector<bool> seen(3001);
  chan_sort::ByServiceType(records.Get(), 0);
  for (const Key& key : records.Keys()) {
    EXPECT_FALSE(seen[static_cast<std::size_t>(key.id)]);
    seen[static_cast<std::size_t>(key.id)] = true;
  }
  EXPECT_EQ(3000, std::count(seen.begin(), seen.end(), true));
}

}  // namespace

#include "records/bulk_insert.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>

namespace {

struct Item {
  int id = 0;
  std::optional<std::uint32_t> key;
  bool operator==(const Item&) const = default;
};
using Items = std::vector<Item>;

// What a list does without the help: one scan for every item.
Items OneByOne(Items list, const Items& added) {
  for (const Item& item : added) {
    auto place = list.begin();
    while (place != list.end() && !(place->key && *place->key >= *item.key)) ++place;
    list.insert(place, item);
  }
  return list;
}

Items InBulk(const Items& list, const Items& added) {
  BulkInsert<Item> bulk;
  for (const Item& item : list) bulk.Append(item, item.key);
  for (const Item& item : added) bulk.Insert(item, *item.key);
  return bulk.Take();
}

Items Keys(const std::vector<std::uint32_t>& keys, int firstId = 0) {
  Items items;
  for (const std::uint32_t key : keys) items.push_back({firstId++, key});
  return items;
}

TEST(BulkInsert, EqualKeysGoInFront) {
  const Items result = InBulk({}, Keys({5, 3, 3}));
  EXPECT_EQ((Items{{2, 3}, {1, 3}, {0, 5}}), result);
}

TEST(BulkInsert, Empty) {
  EXPECT_TRUE(InBulk({}, {}).empty());
  EXPECT_EQ(Keys({2, 1}), InBulk(Keys({2, 1}), {}));
}

TEST(BulkInsert, ExistingOrderIsKept) {
  // 9 hides 4 and 6 behind it.
  const Items result = InBulk(Keys({2, 9, 4, 6}), Keys({5, 10, 1}, 10));
  EXPECT_EQ((Items{{12, 1}, {0, 2}, {10, 5}, {1, 9}, {2, 4}, {3, 6}, {11, 10}}), result);
}

TEST(BulkInsert, KeylessItemsStopNoScan) {
  const Items list = {{0, std::nullopt}, {1, 4}, {2, std::nullopt}};
  EXPECT_EQ((Items{{0, std::nullopt}, {4, 3}, {1, 4}, {2, std::nullopt}, {3, 7}}),
            InBulk(list, Keys({7, 3}, 3)));
}

TEST(BulkInsert, SameAsOneByOne) {
  std::mt19937 random(5);
  for (int round = 0; round < 3000; ++round) {
    const std::uint32_t range = 1u << (random() % 12);
    const auto items = [&](int firstId, bool keyless) {
      Items result(random() % 40);
      for (Item& item : result) {
        item.id = firstId++;
        item.key = random() % range;
        if (random() % 50 == 0) item.key = 0xFFFFFFFF;
        if (keyless && random() % 10 == 0) item.key = std::nullopt;
      }
      return result;
    };
    const Items list = items(0, true);
    const Items added = items(1000, false);
    ASSERT_EQ(OneByOne(list, added), InBulk(list, added)) << round;
  }
}

TEST(BulkInsert, SameAsOneByOneOnPatterns) {
  std::vector<std::uint32_t> ascending(300);
  std::iota(ascending.begin(), ascending.end(), 1);
  const std::vector<std::uint32_t> descending(ascending.rbegin(), ascending.rend());
  const std::vector<std::uint32_t> equal(300, 7);
  for (const auto& list : {ascending, descending, equal, std::vector<std::uint32_t>()}) {
    for (const auto& added : {ascending, descending, equal}) {
      const Items more = Keys(added, 1000);
      EXPECT_EQ(OneByOne(Keys(list), more), InBulk(Keys(list), more));
    }
  }
}

// What the help stands for: each goes in front of the first stored key that is not smaller than
// its own, and is then stored under another.
Items OneByOneStored(Items list, const Items& added, const std::vector<std::uint32_t>& stored) {
  for (std::size_t i = 0; i < added.size(); ++i) {
    auto place = list.begin();
    while (place != list.end() && !(place->key && *place->key >= *added[i].key)) ++place;
    list.insert(place, {added[i].id, stored[i]});
  }
  return list;
}

Items InBulkStored(const Items& list, const Items& added,
                   const std::vector<std::uint32_t>& stored) {
  BulkInsert<Item> bulk;
  for (const Item& item : list) bulk.Append(item, item.key);
  for (std::size_t i = 0; i < added.size(); ++i) {
    bulk.Insert({added[i].id, stored[i]}, *added[i].key, stored[i]);
  }
  return bulk.Take();
}

TEST(BulkInsert, PlacedByOneKeyStoredUnderAnother) {
  EXPECT_EQ((Items{{2, 2}, {1, 1}, {0, 0}}), InBulkStored({}, Keys({2, 0, 1}), {0, 1, 2}));
  // 1 is stored as 9 and hides 5; 7 then goes in front of it.
  EXPECT_EQ((Items{{0, 0}, {11, 3}, {10, 9}, {1, 5}}),
            InBulkStored({{0, 0}, {1, 5}}, Keys({1, 7}, 10), {9, 3}));
  // Stored under a key that is there already: the first of the two stops the scan.
  EXPECT_EQ((Items{{11, 1}, {10, 5}, {0, 5}}), InBulkStored({{0, 5}}, Keys({2, 5}, 10), {5, 1}));
}

TEST(BulkInsert, StoredSameAsOneByOne) {
  std::mt19937 random(11);
  for (int round = 0; round < 1500; ++round) {
    const std::uint32_t range = 1u << (random() % 7);
    const auto key = [&]() -> std::uint32_t {
      return random() % 40 == 0 ? 0xFFFFFFFFu : static_cast<std::uint32_t>(random() % range);
    };
    Items list(random() % 12);
    int id = 0;
    for (Item& item : list) {
      item.id = id++;
      if (random() % 8 != 0) item.key = key();
    }
    Items added(random() % 30);
    std::vector<std::uint32_t> stored;
    for (Item& item : added) {
      item = {1000 + id++, key()};
      // As positions in a file, and any other way.
      stored.push_back(round % 2 == 0 ? static_cast<std::uint32_t>(stored.size()) : key());
    }
    ASSERT_EQ(OneByOneStored(list, added, stored), InBulkStored(list, added, stored)) << round;
  }
}

// A key that counts how often keys are compared.
struct CountedKey {
  std::uint32_t value = 0;
  static inline std::uint64_t compared = 0;

  bool operator<(const CountedKey& other) const {
    ++compared;
    return value < other.value;
  }
};

// Scanning for each would be 5 * 10^9 comparisons for every pattern.
TEST(BulkInsert, LargeListsTakeFewComparisons) {
  constexpr std::uint32_t kCount = 100'000;
  for (const int pattern : {0, 1, 2}) {
    CountedKey::compared = 0;
    BulkInsert<int, CountedKey> bulk;
    for (std::uint32_t i = 0; i < kCount; ++i) {
      const std::uint32_t key = pattern == 0 ? 7 : pattern == 1 ? kCount - i : i * 7919 % kCount;
      bulk.Insert(static_cast<int>(i), CountedKey{key});
    }
    EXPECT_EQ(kCount, bulk.Take().size());
    EXPECT_LT(CountedKey::compared, std::uint64_t{60} * kCount) << pattern;
  }
}

TEST(BulkInsert, EmptyAfterTake) {
  BulkInsert<std::shared_ptr<int>> bulk;
  const auto item = std::make_shared<int>(1);
  bulk.Insert(item, 5);
  bulk.Insert(item, 4);
  EXPECT_EQ(2u, bulk.Take().size());
  EXPECT_EQ(1, item.use_count());
  EXPECT_TRUE(bulk.Take().empty());
  bulk.Append(item, 2);
  bulk.Insert(item, 1);
  EXPECT_EQ(2u, bulk.Take().size());
  EXPECT_EQ(1, item.use_count());
}

}  // namespace

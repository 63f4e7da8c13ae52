// The order in which the satellite list loads: each satellite is placed by its index in the file
// among the positions that earlier ones were given.
#include <utility>

#include "satellite/lists.h"
#include "support/random.h"

namespace {

class SatelliteLoadOrder : public ListTest<Satellites> {
 protected:
  /// A satellite as the steps below see it.
  struct Item {
    std::string name;
    UINT stored;
    bool operator==(const Item&) const = default;
  };
  using Items = std::vector<Item>;

  /// The steps by themselves: in front of the first stored number that is not smaller than the
  /// index in the file, then the position is stored.
  static void Step(Items& list, const std::string& name, UINT fileIndex, UINT position) {
    auto place = list.begin();
    while (place != list.end() && place->stored < fileIndex) ++place;
    list.insert(place, {name, position});
  }

  void AddSatellite(const std::string& name, UINT fileIndex) {
    ExpectHr(S_OK, AddElement(name.c_str()).SetInt("index", static_cast<LONG>(fileIndex)));
  }

  /// Loads satellites with these indexes in the file; `list` is what is there.
  Items Loaded(const std::vector<UINT>& fileIndexes, Items list = {}) {
    for (UINT position = 0; position < fileIndexes.size(); ++position) {
      const std::string name = "file" + std::to_string(position);
      AddSatellite(name, fileIndexes[position]);
      Step(list, name, fileIndexes[position], position);
    }
    List().Load(dom::kIidNode, Source().Get());
    return list;
  }

  Items Actual() {
    // The stored numbers first: finding the order out changes them.
    std::vector<std::pair<std::string, UINT>> stored;
    const UINT count = Count();
    Items items;
    const auto numbers = Numbers();
    for (const ComPtr<ISatelliteInfo>& record : Order()) {
      const std::string name = TextOf(record);
      UINT number = 4711;
      for (const auto& [known, value] : numbers) {
        if (known == name) number = value;
      }
      items.push_back({name, number});
    }
    EXPECT_EQ(count, items.size());
    return items;
  }

 private:
  std::vector<std::pair<std::string, UINT>> Numbers() {
    std::vector<std::pair<std::string, UINT>> numbers;
    for (const std::string& name : m_names) {
      ComPtr<ISatelliteInfo> record;
      if (List().GetSatInfoByName(Wide(name).Get(), record.Receive()) != S_OK) continue;
      numbers.emplace_back(name, IndexOf(record));
    }
    return numbers;
  }

 protected:
  std::vector<std::string> m_names = [] {
    std::vector<std::string> names;
    for (int i = 0; i < 60; ++i) {
      names.push_back("file" + std::to_string(i));
      names.push_back("old" + std::to_string(i));
    }
    return names;
  }();
};

}  // namespace

TEST_F(SatelliteLoadOrder, FileIndexesTwoZeroOne) {
  const Items expected = Loaded({2, 0, 1});
  // "file1" goes in front of 0 stored; then 1 stored is not smaller than 1: in front again.
  EXPECT_EQ((Items{{"file2", 2}, {"file1", 1}, {"file0", 0}}), expected);
  EXPECT_EQ(expected, Actual());
}

TEST_F(SatelliteLoadOrder, AscendingFromZeroIsTheFilesOrder) {
  const Items expected = Loaded({0, 1, 2, 3});
  EXPECT_EQ((Items{{"file0", 0}, {"file1", 1}, {"file2", 2}, {"file3", 3}}), expected);
  EXPECT_EQ(expected, Actual());
}

TEST_F(SatelliteLoadOrder, AscendingFromOneIsTheFilesOrder) {
  const Items expected = Loaded({1, 2, 3});
  EXPECT_EQ((Items{{"file0", 0}, {"file1", 1}, {"file2", 2}}), expected);
  EXPECT_EQ(expected, Actual());
}

TEST_F(SatelliteLoadOrder, NoIndexIsTheReverseOrder) {
  const Items expected = Loaded({0, 0, 0});
  EXPECT_EQ((Items{{"file2", 2}, {"file1", 1}, {"file0", 0}}), expected);
  EXPECT_EQ(expected, Actual());
}

TEST_F(SatelliteLoadOrder, NegativeIndexesAreGreat) {
  const Items expected = Loaded({0xFFFFFFFF, 5, 0x80000000});
  EXPECT_EQ((Items{{"file0", 0}, {"file1", 1}, {"file2", 2}}), expected);
  EXPECT_EQ(expected, Actual());
}

TEST_F(SatelliteLoadOrder, TheThirdWithIndexSeven) {
  const Items expected = Loaded({0, 1, 7});
  EXPECT_EQ(2U, expected[2].stored);
  EXPECT_EQ(expected, Actual());
}

TEST_F(SatelliteLoadOrder, RandomIndexesOnAnyList) {
  Random random(3);
  for (int round = 0; round < 250; ++round) {
    SCOPED_TRACE(round);
    ExpectHr(S_OK, List().Clear());
    const UINT range = 1U << random(7);
    Items list;
    for (UINT i = 0, count = random(3) == 0 ? 0 : random(12); i < count; ++i) {
      const UINT index = random(range);
      const std::string name = "old" + std::to_string(i);
      Added(index)->SetName(Wide(name).Get());
      auto place = list.begin();
      while (place != list.end() && place->stored < index) ++place;
      list.insert(place, {name, index});
    }
    // Hosts change indexes in place, too.
    if (!list.empty() && random(2) == 0) {
      Item& changed = list[random(static_cast<std::uint32_t>(list.size()))];
      changed.stored = random(range);
      ComPtr<ISatelliteInfo> record;
      ExpectHr(S_OK, List().GetSatInfoByName(Wide(changed.name).Get(), record.Receive()));
      record->SetIndex(changed.stored);
    }
    std::vector<UINT> fileIndexes(random(30));
    for (UINT& index : fileIndexes) index = random(20) == 0 ? 0xFFFFFFFF : random(range);
    const Items expected = Loaded(fileIndexes, list);
    ASSERT_EQ(expected, Actual());
  }
}

// Elements that cannot be loaded do not shift the positions of the others; here all can, and a
// second load starts again from 0.
TEST_F(SatelliteLoadOrder, TheSecondLoadCountsFromZero) {
  Items expected = Loaded({1, 2});
  List().Load(dom::kIidNode, Source().Get());
  Step(expected, "file0", 1, 0);
  Step(expected, "file1", 2, 1);
  Texts names;
  for (const Item& item : expected) names.push_back(item.name);
  EXPECT_EQ(names, OrderedTexts());
}

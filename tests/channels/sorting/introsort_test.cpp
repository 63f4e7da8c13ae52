#include "channels/sorting/introsort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace {

struct Sortable {
  int key = 0;
  int id = 0;
  bool operator==(const Sortable&) const = default;
};
using Sortables = std::vector<Sortable>;
using Before = std::function<bool(const Sortable&, const Sortable&)>;

// The steps again, spelled out on positions without any sharing between them: slow and plain.
class SortModel {
 public:
  SortModel(Sortables items, Before before) : a(std::move(items)), less(std::move(before)) {}
  Sortables Run() {
    Sort(0, Size(a), Size(a));
    return a;
  }
  int heapSorts = 0;
  int partitions = 0;

 private:
  static int Size(const Sortables& items) { return static_cast<int>(items.size()); }
  Sortable& At(int i) { return a.at(static_cast<std::size_t>(i)); }
  bool Less(int i, int j) { return less(At(i), At(j)); }
  void Swap(int i, int j) {
    const Sortable t = At(i);
    At(i) = At(j);
    At(j) = t;
  }

  void Sort(int first, int last, int budget) {
    if (last - first <= 32) {
      Insertion(first, last);
    } else if (budget <= 0) {
      ++heapSorts;
      Heap(first, last);
    } else {
      ++partitions;
      const auto [x, y] = Partition(first, last);
      budget = budget / 2 + budget / 4;
      // The two sides do not touch each other, so their order does not matter here.
      Sort(first, x, budget);
      Sort(y, last, budget);
    }
  }

  void Insertion(int first, int last) {
    for (int i = first + 1; i < last; ++i) {
      const Sortable value = At(i);
      const auto begin = a.begin();
      if (less(value, At(first))) {
        std::rotate(begin + first, begin + i, begin + i + 1);
        continue;
      }
      int to = i;
      while (to > first && less(value, At(to - 1))) --to;
      std::rotate(begin + to, begin + i, begin + i + 1);
    }
  }

  void Adjust(int base, int hole, int n, Sortable value) {
    const int start = hole;
    while (hole < (n - 1) / 2) {
      const int right = 2 * hole + 2;
      const int child = Less(base + right, base + right - 1) ? right - 1 : right;
      At(base + hole) = At(base + child);
      hole = child;
    }
    if (hole == (n - 1) / 2 && n % 2 == 0) {
      At(base + hole) = At(base + n - 1);
      hole = n - 1;
    }
    for (;;) {
      const int parent = (hole - 1) / 2;
      if (hole <= start || !less(At(base + parent), value)) break;
      At(base + hole) = At(base + parent);
      hole = parent;
    }
    At(base + hole) = value;
  }

  void Heap(int first, int last) {
    const int n = last - first;
    for (int hole = n / 2 - 1; hole >= 0; --hole) Adjust(first, hole, n, At(first + hole));
    for (int rest = n - 1; rest >= 1; --rest) {
      const Sortable value = At(first + rest);
      At(first + rest) = At(first);
      Adjust(first, 0, rest, value);
    }
  }

  void Three(int x, int y, int z) {
    if (Less(y, x)) Swap(x, y);
    if (Less(z, y)) {
      Swap(y, z);
      if (Less(y, x)) Swap(x, y);
    }
  }

  std::pair<int, int> Partition(int first, int last) {
    const int mid = first + (last - first) / 2;
    const int back = last - 1;
    if (back - first > 40) {
      const int step = (back - first + 1) / 8;
      Three(first, first + step, first + 2 * step);
      Three(mid - step, mid, mid + step);
      Three(back - 2 * step, back - step, back);
      Three(first + step, mid, back - step);
    } else {
      Three(first, mid, back);
    }
    int p = mid;
    int q = mid + 1;
    while (p > first && !Less(p - 1, p) && !Less(p, p - 1)) p -= 1;
    while (q < last && !Less(q, p) && !Less(p, q)) q += 1;
    int l = p;
    int r = q;
    for (;;) {
      bool stop = false;
      while (r < last && !stop) {
        if (Less(p, r)) {
          r += 1;
        } else if (Less(r, p)) {
          stop = true;
        } else {
          if (q != r) Swap(q, r);
          q += 1;
          r += 1;
        }
      }
      stop = false;
      while (first < l && !stop) {
        if (Less(l - 1, p)) {
          l -= 1;
        } else if (Less(p, l - 1)) {
          stop = true;
        } else {
          p -= 1;
          if (p != l - 1) Swap(p, l - 1);
          l -= 1;
        }
      }
      if (l == first && r == last) return {p, q};
      if (l == first) {
        if (q != r) Swap(p, q);
        q += 1;
        Swap(p, r);
        p += 1;
        r += 1;
      } else if (r == last) {
        l -= 1;
        p -= 1;
        if (l != p) Swap(l, p);
        q -= 1;
        Swap(p, q);
      } else {
        l -= 1;
        Swap(r, l);
        r += 1;
      }
    }
  }

  Sortables a;
  Before less;
};

bool ByKey(const Sortable& a, const Sortable& b) { return a.key < b.key; }

Sortables Sorted(Sortables items, const Before& before) {
  IntroSort<Sortable, Before>(items, before).Run();
  return items;
}

Sortables FromKeys(const std::vector<int>& keys) {
  Sortables items;
  for (const int key : keys) items.push_back({key, static_cast<int>(items.size())});
  return items;
}

void ExpectPermutation(const Sortables& before, const Sortables& after) {
  std::vector<int> ids;
  for (const Sortable& item : after) {
    ids.push_back(item.id);
    ASSERT_EQ(before.at(static_cast<std::size_t>(item.id)), item);
  }
  std::sort(ids.begin(), ids.end());
  std::vector<int> expected(before.size());
  std::iota(expected.begin(), expected.end(), 0);
  ASSERT_EQ(expected, ids);
}

// Same steps as the model, nothing lost, and in order.
void ExpectSorts(const Sortables& items) {
  const Sortables sorted = Sorted(items, ByKey);
  ASSERT_EQ(SortModel(items, ByKey).Run(), sorted);
  ExpectPermutation(items, sorted);
  ASSERT_TRUE(std::is_sorted(sorted.begin(), sorted.end(), ByKey));
}

TEST(IntroSort, EverySmallSize) {
  std::mt19937 random(1);
  for (int size = 0; size <= 200; ++size) {
    for (const int keys : {1, 2, 5, 50, 100000}) {
      Sortables items;
      for (int i = 0; i < size; ++i) items.push_back({static_cast<int>(random()) % keys, i});
      ExpectSorts(items);
    }
  }
}

TEST(IntroSort, RandomInputs) {
  std::mt19937 random(2);
  for (int round = 0; round < 120; ++round) {
    const int size = static_cast<int>(random() % 5001);
    const unsigned keys = 1u << (random() % 20);
    Sortables items;
    for (int i = 0; i < size; ++i) items.push_back({static_cast<int>(random() % keys), i});
    ExpectSorts(items);
  }
}

TEST(IntroSort, Patterns) {
  for (const int size : {33, 34, 40, 41, 42, 43, 100, 1000, 4999, 5000}) {
    std::vector<std::vector<int>> patterns(7);
    for (int i = 0; i < size; ++i) {
      patterns[0].push_back(i);
      patterns[1].push_back(-i);
      patterns[2].push_back(0);
      patterns[3].push_back(i % 2);
      patterns[4].push_back(i < size / 2 ? i : size - i);
      patterns[5].push_back(i * 7919 % size);
      patterns[6].push_back(i == size - 1 ? -1 : i);
    }
    for (const std::vector<int>& keys : patterns) ExpectSorts(FromKeys(keys));
  }
}

TEST(IntroSort, EqualElementsKeepTheirOrderUpToTheInsertionLimit) {
  Sortables items;
  for (int i = 0; i < 32; ++i) items.push_back({i % 3, i});
  Sortables expected = items;
  std::stable_sort(expected.begin(), expected.end(), ByKey);
  EXPECT_EQ(expected, Sorted(items, ByKey));
}

TEST(IntroSort, AllEqualStaysAsItIs) {
  const Sortables items = FromKeys(std::vector<int>(3000, 5));
  EXPECT_EQ(items, Sorted(items, ByKey));
}

// Followed by hand: the pivot is the 3 in the middle, the right scan brings the other 3 next to it,
// and each of the 13 greater elements on the left then moves past the pair and turns it around.
TEST(IntroSort, AboveTheLimitEqualElementsMove) {
  std::vector<int> keys(33);
  std::iota(keys.begin(), keys.end(), 0);
  std::swap(keys[3], keys[16]);  // the middle holds 3
  keys[20] = 3;
  const Sortables items = FromKeys(keys);
  const Sortables sorted = Sorted(items, ByKey);
  ASSERT_EQ(SortModel(items, ByKey).Run(), sorted);
  EXPECT_EQ(3, sorted[3].key);
  EXPECT_EQ(20, sorted[3].id);
  EXPECT_EQ(3, sorted[4].key);
  EXPECT_EQ(16, sorted[4].id);
}

// McIlroy's adversary: answers comparisons so that every pivot is as bad as it can be, and thereby
// builds an input that is.
Sortables WorstInput(int size) {
  Sortables items;
  for (int i = 0; i < size; ++i) items.push_back({0, i});
  const int undecided = size;
  std::vector<int> value(static_cast<std::size_t>(size), undecided);
  int solid = 0;
  int candidate = 0;
  const Before answer = [&](const Sortable& x, const Sortable& y) {
    int& vx = value[static_cast<std::size_t>(x.id)];
    int& vy = value[static_cast<std::size_t>(y.id)];
    if (x.id == y.id) return false;
    if (vx == undecided && vy == undecided) (x.id == candidate ? vx : vy) = solid++;
    if (vx == undecided) candidate = x.id;
    if (vy == undecided) candidate = y.id;
    return vx < vy;
  };
  Sorted(items, answer);
  return FromKeys(value);
}

TEST(IntroSort, HeapSortTakesOverWhenTheBudgetIsGone) {
  for (const int size : {500, 1001, 3000, 5000}) {
    const Sortables items = WorstInput(size);
    SortModel model(items, ByKey);
    model.Run();
    EXPECT_GT(model.heapSorts, 0) << size;
    EXPECT_GT(model.partitions, 10) << size;
    ExpectSorts(items);
  }
}

TEST(IntroSort, HeapSortWithManyEquals) {
  for (const int size : {1000, 1001, 5000}) {
    Sortables items = WorstInput(size);
    for (Sortable& item : items) item.key /= 3;
    ExpectSorts(items);
  }
}

TEST(IntroSort, ComparisonsStayInBounds) {
  const Sortables items = WorstInput(5000);
  std::size_t comparisons = 0;
  Sorted(items, [&](const Sortable& a, const Sortable& b) {
    ++comparisons;
    return a.key < b.key;
  });
  // n log2 n is about 61,000; a plain quicksort would need millions here.
  EXPECT_LT(comparisons, 400'000u);
}

// The list's own third comparator and worse ones: the outcome follows from the steps.
TEST(IntroSort, ComparatorsThatAreNoOrdering) {
  const std::vector<Before> comparators = {
      [](const Sortable& a, const Sortable& b) { return a.key < b.key && a.id % 7 > b.id % 7; },
      [](const Sortable& a, const Sortable& b) { return a.key % 5 < b.key % 5 && a.key > b.key; },
      [](const Sortable&, const Sortable&) { return true; },
      [](const Sortable& a, const Sortable& b) { return (a.key + b.key) % 2 == 0; },
      [](const Sortable& a, const Sortable& b) { return (a.key * 31 + b.key * 17) % 5 < 2; },
      [](const Sortable& a, const Sortable& b) { return a.key <= b.key; },
      [](const Sortable& a, const Sortable& b) { return (b.key - a.key + 300) % 3 == 1; },
  };
  std::mt19937 random(3);
  for (const Before& before : comparators) {
    for (int round = 0; round < 40; ++round) {
      const int size = static_cast<int>(random() % 1500);
      Sortables items;
      for (int i = 0; i < size; ++i) items.push_back({static_cast<int>(random() % 100), i});
      const Sortables sorted = Sorted(items, before);
      ASSERT_EQ(SortModel(items, before).Run(), sorted);
      ExpectPermutation(items, sorted);
    }
  }
}

// Answers that change from call to call: nothing is promised but that nothing is lost or touched
// outside the range.
TEST(IntroSort, ComparatorThatAnswersAtRandom) {
  std::mt19937 random(4);
  for (int round = 0; round < 200; ++round) {
    const int size = static_cast<int>(random() % 2000);
    Sortables items;
    for (int i = 0; i < size; ++i) items.push_back({0, i});
    ExpectPermutation(
        items, Sorted(items, [&](const Sortable&, const Sortable&) { return random() % 2; }));
  }
}

}  // namespace

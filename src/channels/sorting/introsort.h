// The list's own sort. The order of equal records, and what comparators do that are no ordering, is
// part of what a list does; library sorts differ there and may leave the range. Every step here
// stays inside the range whatever the comparator answers.
#pragma once

#include <cstddef>
#include <span>
#include <utility>

/// Unstable introspective sort: insertion sort up to 32 elements, partitioning around a median of
/// three or nine, heap sort when the budget is used up.
template <typename T, typename Before>
class IntroSort {
 public:
  IntroSort(std::span<T> items, Before before) : m_items(items), m_before(std::move(before)) {}

  void Run() { Sort(0, m_items.size(), m_items.size()); }

 private:
  using Position = std::size_t;
  struct Range {
    Position first;
    Position last;  // one past
  };

  static constexpr std::size_t kInsertionLimit = 32;
  static constexpr std::size_t kNineLimit = 40;

  bool IsBefore(Position a, Position b) { return m_before(m_items[a], m_items[b]); }
  void Swap(Position a, Position b) {
    if (a != b) std::swap(m_items[a], m_items[b]);
  }

  void Sort(Position first, Position last, std::size_t budget) {
    while (last - first > kInsertionLimit) {
      if (budget == 0) {
        SortHeap({first, last});
        return;
      }
      const Range equal = Partition({first, last});
      budget = budget / 2 + budget / 4;
      if (equal.first - first < last - equal.last) {
        Sort(first, equal.first, budget);
        first = equal.last;
      } else {
        Sort(equal.last, last, budget);
        last = equal.first;
      }
    }
    SortByInsertion({first, last});
  }

  void SortByInsertion(Range range) {
    if (range.first == range.last) return;
    for (Position next = range.first + 1; next < range.last; ++next) {
      Position hole = next;
      T value = std::move(m_items[next]);
      const bool toFront = m_before(value, m_items[range.first]);
      while (hole > range.first && (toFront || m_before(value, m_items[hole - 1]))) {
        m_items[hole] = std::move(m_items[hole - 1]);
        --hole;
      }
      m_items[hole] = std::move(value);
    }
  }

  void SortHeap(Range range) {
    const std::span<T> heap = m_items.subspan(range.first, range.last - range.first);
    for (std::size_t hole = heap.size() / 2; hole-- > 0;) {
      Adjust(heap, hole, std::move(heap[hole]));
    }
    for (std::size_t rest = heap.size(); rest-- > 1;) {
      T value = std::move(heap[rest]);
      heap[rest] = std::move(heap[0]);
      Adjust(heap.first(rest), 0, std::move(value));
    }
  }

  // Sinks the hole to the bottom, then lifts `value` from there to its place.
  void Adjust(std::span<T> heap, std::size_t hole, T value) {
    const std::size_t top = hole;
    const std::size_t parents = (heap.size() - 1) / 2;  // that have two children
    while (hole < parents) {
      std::size_t child = 2 * hole + 2;
      if (m_before(heap[child], heap[child - 1])) --child;
      heap[hole] = std::move(heap[child]);
      hole = child;
    }
    if (hole == parents && heap.size() % 2 == 0) {
      heap[hole] = std::move(heap.back());
      hole = heap.size() - 1;
    }
    while (hole > top) {
      const std::size_t parent = (hole - 1) / 2;
      if (!m_before(heap[parent], value)) break;
      heap[hole] = std::move(heap[parent]);
      hole = parent;
    }
    heap[hole] = std::move(value);
  }

  void OrderThree(Position x, Position y, Position z) {
    if (IsBefore(y, x)) Swap(x, y);
    if (!IsBefore(z, y)) return;
    Swap(y, z);
    if (IsBefore(y, x)) Swap(x, y);
  }

  // Leaves a guess at the median in the middle.
  Position GuessMedian(Range range) {
    const Position mid = range.first + (range.last - range.first) / 2;
    const Position back = range.last - 1;
    const std::size_t distance = back - range.first;
    if (distance > kNineLimit) {
      const std::size_t step = (distance + 1) / 8;
      OrderThree(range.first, range.first + step, range.first + 2 * step);
      OrderThree(mid - step, mid, mid + step);
      OrderThree(back - 2 * step, back - step, back);
      OrderThree(range.first + step, mid, back - step);
    } else {
      OrderThree(range.first, mid, back);
    }
    return mid;
  }

  // Splits the range into what is before the pivot, the answered range of what equals it, and what
  // is after it. The pivot is always the first of the equal range.
  Range Partition(Range range) {
    const Position mid = GuessMedian(range);
    Range equal = {mid, mid + 1};
    while (equal.first > range.first && AreEqual(equal.first - 1, equal.first)) --equal.first;
    while (equal.last < range.last && AreEqual(equal.last, equal.first)) ++equal.last;
    Position left = equal.first;
    Position right = equal.last;
    for (;;) {
      right = ScanRight(right, range.last, equal);
      left = ScanLeft(left, range.first, equal);
      if (left == range.first && right == range.last) return equal;
      if (left == range.first) {
        if (equal.last != right) Swap(equal.first, equal.last);
        ++equal.last;
        Swap(equal.first++, right++);
      } else if (right == range.last) {
        Swap(--left, --equal.first);
        Swap(equal.first, --equal.last);
      } else {
        Swap(right++, --left);
      }
    }
  }

  // Past what is after the pivot, gathering what equals it, to the first that is before it.
  Position ScanRight(Position right, Position last, Range& equal) {
    for (; right < last; ++right) {
      if (IsBefore(equal.first, right)) continue;
      if (IsBefore(right, equal.first)) break;
      Swap(equal.last++, right);
    }
    return right;
  }

  // The mirror image: `left` is one past the element that stopped it.
  Position ScanLeft(Position left, Position first, Range& equal) {
    for (; left > first; --left) {
      if (IsBefore(left - 1, equal.first)) continue;
      if (IsBefore(equal.first, left - 1)) break;
      Swap(--equal.first, left - 1);
    }
    return left;
  }

  bool AreEqual(Position a, Position b) { return !IsBefore(a, b) && !IsBefore(b, a); }

  std::span<T> m_items;
  Before m_before;
};

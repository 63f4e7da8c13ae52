#include "kit/history/snapshots/retention.h"

#include <algorithm>
#include <set>

namespace zortunedex::kit::history {

std::vector<Number> OldOnes(const Store& store, std::optional<std::size_t> keep) {
  std::vector<Number> old;
  std::set<std::string> counted;
  std::uint64_t bytes = 0;
  std::size_t kept = 0;
  const auto& snapshots = store.Snapshots();
  for (auto snapshot = snapshots.rbegin(); snapshot != snapshots.rend(); ++snapshot) {
    for (const auto& [name, stored] : snapshot->second.files) {
      if (stored && counted.insert(stored->in).second) bytes += stored->size;
    }
    const bool isKept =
        keep ? kept < *keep
             : kept < kFewestSnapshots || (kept < kMostSnapshots && bytes <= kMostBytes);
    if (isKept) ++kept;
    if (!isKept && &snapshot->second != store.Head()) old.push_back(snapshot->first);
  }
  std::reverse(old.begin(), old.end());
  return old;
}

void RemoveOld(Store& store, const std::vector<Number>& numbers) {
  for (const Number number : numbers) store.Remove(number);
  if (!numbers.empty()) store.RemoveUnnamed();
}

}  // namespace zortunedex::kit::history

// How much of a history is kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "kit/history/snapshots/store.h"

namespace zortunedex::kit::history {

inline constexpr std::size_t kMostSnapshots = 50;
inline constexpr std::size_t kFewestSnapshots = 10;  ///< however large they are
inline constexpr std::uint64_t kMostBytes = std::uint64_t{64} * 1024 * 1024;

/// The oldest snapshots: all but the newest `keep`, or as many as are kept without being asked;
/// never HEAD. In ascending order.
std::vector<Number> OldOnes(const Store& store, std::optional<std::size_t> keep);

/// Removes snapshots and the copies that no other names.
void RemoveOld(Store& store, const std::vector<Number>& numbers);

}  // namespace zortunedex::kit::history

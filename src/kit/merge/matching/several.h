#pragma once

#include <cstdint>
#include <vector>

#include "kit/merge/matching/matching.h"

namespace zortunedex::kit::merge {

/// The nodes of both sides that one key fits.
struct Bucket {
  std::vector<std::size_t> left;
  std::vector<std::size_t> right;

  bool IsOneSided() const { return left.empty() || right.empty(); }
};

/// Takes what is matched or ambiguous out.
void KeepOpen(Bucket& bucket, const Matching& matching);

/// Where several fit: those of the same place and name belong together where there is one on either
/// side, then those of the same place, those of the same name, and the last two. The rest is
/// ambiguous.
void ResolveSeveral(Bucket bucket, const Nodes& left, const Nodes& right, InputSignalType signal,
                    Matching& matching);

}  // namespace zortunedex::kit::merge

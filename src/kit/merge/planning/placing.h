#pragma once

#include <vector>

#include "kit/merge/matching/nodes.h"
#include "kit/merge/merge.h"

namespace zortunedex::kit::merge {

/// A channel of the list as it is to be.
struct Placed {
  Channel channel;
  Service service;
  std::size_t listPlace = kNone;  ///< kNone for a new one
  std::size_t scanPlace = kNone;  ///< of a new one
};

/// Puts new channels among those of the list and gives them indexes: behind the last one by
/// frequency, polarisation and service, or each behind the last channel of its transponder. Where
/// that is in the middle, or `isNumbered`, all channels are numbered 1, 2, 3 …
std::vector<Placed> Place(std::vector<Placed> list, std::vector<Placed> fresh, NewOnes where,
                          InputSignalType signal, bool isNumbered);

}  // namespace zortunedex::kit::merge

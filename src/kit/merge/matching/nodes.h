// Channels that are one service count as one.
#pragma once

#include <cstddef>
#include <vector>

#include "kit/merge/matching/service.h"

namespace zortunedex::kit::merge {

inline constexpr std::size_t kNone = static_cast<std::size_t>(-1);

struct Nodes {
  std::vector<Service> services;                  ///< of the first member
  std::vector<std::vector<std::size_t>> members;  ///< places, ascending
  std::vector<Service> ofPlaces;
  std::vector<std::size_t> nodeOf;  ///< by place; kNone for one that is left out

  std::size_t Count() const { return services.size(); }
};

/// Groups the services by what identifies them, in the order of their first members; a service that
/// says too little is a node with those that are the same in everything. Those of a kind that is
/// not kNone are one whatever they say.
Nodes GroupNodes(const std::vector<Service>& services, const std::vector<bool>& isLeftOut,
                 InputSignalType signal, const std::vector<std::size_t>& kinds = {});

}  // namespace zortunedex::kit::merge

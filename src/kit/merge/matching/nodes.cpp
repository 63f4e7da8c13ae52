#include "kit/merge/matching/nodes.h"

#include <map>
#include <utility>

#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {

Nodes GroupNodes(const std::vector<Service>& services, const std::vector<bool>& isLeftOut,
                 InputSignalType signal, const std::vector<std::size_t>& kinds) {
  Nodes nodes;
  nodes.ofPlaces = services;
  nodes.nodeOf.assign(services.size(), kNone);
  std::map<std::pair<Service, std::size_t>, std::size_t> known;
  for (std::size_t place = 0; place < services.size(); ++place) {
    if (place < isLeftOut.size() && isLeftOut[place]) continue;
    const std::size_t kind = place < kinds.size() ? kinds[place] : kNone;
    const Service key = kind == kNone ? IdentityKey(services[place], signal) : Service();
    const auto [found, isNew] = known.try_emplace({key, kind}, nodes.Count());
    if (isNew) {
      nodes.services.push_back(services[place]);
      nodes.members.emplace_back();
    }
    nodes.members[found->second].push_back(place);
    nodes.nodeOf[place] = found->second;
  }
  return nodes;
}

}  // namespace zortunedex::kit::merge

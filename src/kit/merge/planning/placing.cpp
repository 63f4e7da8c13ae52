#include "kit/merge/planning/placing.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "kit/merge/matching/transponders.h"

namespace zortunedex::kit::merge {
namespace {

auto OrderOf(const Placed& placed) {
  const Service& service = placed.service;
  return std::tuple(service[Part::Frequency], service[Part::Polarisation], service[Part::Rf],
                    service[Part::Number], service[Part::Major], service[Part::Minor],
                    placed.scanPlace);
}

void Renumber(std::vector<Placed>& channels) {
  UINT index = 0;
  for (Placed& placed : channels) placed.channel.index = ++index;
}

/// New channels by the place that they stand behind.
using Behind = std::map<std::size_t, std::vector<Placed>>;

Behind FindPlaces(const std::vector<Placed>& list, std::vector<Placed> fresh, NewOnes where,
                  InputSignalType signal) {
  Transponders transponders(signal);
  if (where == NewOnes::Transponder) {
    for (std::size_t i = 0; i < list.size(); ++i) transponders.Add(list[i].service, i);
  }
  Behind behind;
  for (Placed& placed : fresh) {
    const std::size_t last = list.empty() ? 0 : list.size() - 1;
    behind[transponders.LastOf(placed.service).value_or(last)].push_back(std::move(placed));
  }
  return behind;
}

}  // namespace

std::vector<Placed> Place(std::vector<Placed> list, std::vector<Placed> fresh, NewOnes where,
                          InputSignalType signal, bool isNumbered) {
  std::sort(fresh.begin(), fresh.end(),
            [](const Placed& a, const Placed& b) { return OrderOf(a) < OrderOf(b); });
  UINT highest = 0;
  for (const Placed& placed : list) highest = std::max(highest, placed.channel.index);
  if (fresh.size() > UINT32_MAX - highest) isNumbered = true;
  for (Placed& placed : fresh) placed.channel.index = ++highest;

  Behind behind = FindPlaces(list, std::move(fresh), where, signal);
  if (!behind.empty() && behind.begin()->first + 1 < list.size()) isNumbered = true;
  std::vector<Placed> all;
  for (std::size_t i = 0; i < std::max<std::size_t>(list.size(), 1); ++i) {
    if (i < list.size()) all.push_back(std::move(list[i]));
    const auto found = behind.find(i);
    if (found != behind.end()) std::ranges::move(found->second, std::back_inserter(all));
  }
  if (isNumbered) Renumber(all);
  return all;
}

}  // namespace zortunedex::kit::merge

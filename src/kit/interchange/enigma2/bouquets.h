// The bouquets of a folder of settings: in which order services stand, what the user calls them and
// which ones are favourites.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "kit/interchange/enigma2/enigma2_words.h"
#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange::enigma2 {

struct Bouquets {
  /// Services in the order in which they stand, each once: those of bouquets of the user's
  /// favourites behind all others.
  std::vector<ServiceKey> order;
  std::map<ServiceKey, std::string> names;  ///< that the user gave
  std::set<ServiceKey> favorites;
};

/// Lines that name no service of a broadcast are losses (L101), those that are not understood, too
/// (L501); both begin with the name of their file.
Bouquets ReadBouquets(const Input& input, Losses& losses);

}  // namespace zortunedex::kit::interchange::enigma2

#pragma once

#include <string>
#include <vector>

#include "kit/satellites/catalogue.h"
#include "kit/satellites/catalogue_table.h"

namespace zortunedex::kit {

/// A transponder made of a table's entry.
struct ReadEntry {
  Transponder transponder;  ///< its name is the frequency in MHz and the polarisation
  ESatFreqBand band = SatFreqBand_KuBand;
  std::vector<std::string> notHeld;  ///< values that the catalogue's format cannot hold
};

/// An entry that cannot become a transponder.
struct UnusableEntry {
  std::string reason;
};

/// Raises UnusableEntry. Frequencies below 10 GHz are in the C band, all others in the Ku band: the
/// format has no other ones.
ReadEntry ReadTableEntry(const catalogue_table::Entry& entry);

}  // namespace zortunedex::kit

// The file of services and transponders, in the fourth and the fifth form, taken apart.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "kit/interchange/enigma2/enigma2_words.h"
#include "kit/interchange/loss.h"

namespace zortunedex::kit::interchange::enigma2 {

struct Transponder {
  char kind = 0;                    ///< 's', 't', 'c', 'a'
  std::vector<std::string> values;  ///< in their order
  std::string more;                 ///< what follows them in the fifth form
  std::size_t line = 0;

  /// Empty for one that is missing.
  std::string_view Value(std::size_t place) const {
    return place < values.size() ? std::string_view(values[place]) : std::string_view();
  }
};

struct ServiceEntry {
  ServiceKey key;
  std::uint32_t type = 0;
  std::string rest;  ///< numbers behind the type
  std::string name;
  std::string data;  ///< "p:PROVIDER,c:000065,..."
  std::size_t line = 0;
};

struct Lamedb {
  std::map<TransponderKey, Transponder> transponders;
  std::vector<ServiceEntry> services;  ///< in the file's order
};

/// A line that is not understood is a loss (L501), and so is a second transponder of one identity
/// (L403). Raises a Failure for what is neither form.
Lamedb ReadLamedb(std::string_view bytes, Losses& losses);

}  // namespace zortunedex::kit::interchange::enigma2

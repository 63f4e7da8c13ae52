// What a list that leaves or enters is told by the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "kit/interchange/format.h"
#include "kit/interchange/services/file_units.h"

namespace zortunedex::kit::tool {

struct ExchangeOptions {
  interchange::FileUnit fileUnit = interchange::FileUnit::Kilohertz;
  const interchange::Format* format = nullptr;
  std::set<std::string> given;  ///< options that not every format takes
  interchange::Names names = interchange::Names::Shown;
  std::string tables;  ///< folder of transponder tables
  std::uint32_t bandwidth = 0;
  bool mark = true;
  bool strict = false;
  std::string report;  ///< file for the loss report
  std::string urlTemplate;
  bool satip = false;  ///< the player's addresses are those of a SAT>IP server
  std::string host;

  std::string file;  ///< or folder, to be imported
  bool append = false;
  bool replace = false;
  std::optional<std::int32_t> position;
};

}  // namespace zortunedex::kit::tool

// The report of what was lost, for programs and for people.
#pragma once

#include <string>

#include "kit/interchange/loss.h"

namespace zortunedex::kit::interchange {

/// Which way a list went.
enum class Direction { Export, Import };

/// What a report is made of. The losses have to stay.
struct LossReport {
  Direction direction = Direction::Export;
  std::string format;
  std::size_t read = 0;     ///< channels that there were
  std::size_t written = 0;  ///< channels that came through
  const Losses& losses;
};

/// {"tunedex":"loss","version":1,"direction","format","read","written","losses":[{"code","field",
/// "count","channels":[{"index","name","line","value","became"}]}]}, by code and field. Indented by
/// two blanks, UTF-8, no line feed at the end.
std::string LossJson(const LossReport& report);

/// A line for each code, with its fields and how many channels are meant; empty for no losses.
std::string LossText(const LossReport& report);

}  // namespace zortunedex::kit::interchange

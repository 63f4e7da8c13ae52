#include "tool/printing/losses.h"

#include <iostream>
#include <sstream>

#include "kit/text/printable.h"

namespace zortunedex::kit::tool {

void PrintLosses(const interchange::LossReport& report) {
  std::istringstream lines(interchange::LossText(report));
  for (std::string line; std::getline(lines, line);) std::cerr << Printable(line) << '\n';
}

}  // namespace zortunedex::kit::tool

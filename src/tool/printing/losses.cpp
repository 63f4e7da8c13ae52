#include "tool/printing/losses.h"

#include <iostream>
#include <sstream>

#include "kit/text/printable.h"

void PrintLosses(const interchange::LossReport& report) {
  std::istringstream lines(interchange::LossText(report));
  for (std::string line; std::getline(lines, line);) std::cerr << Printable(line) << '\n';
}

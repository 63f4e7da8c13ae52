#include "kit/satellites/catalogue_lnbs.h"

namespace zortunedex::kit {

namespace {

struct Row {
  const char* type;
  DWORD low;
  DWORD high;
  DWORD switchover;
};

// kHz.
constexpr Row kRows[] = {
    {"Universal", 9'750'000, 10'600'000, 11'700'000}, {"Enhanced", 9'750'000, 9'750'000, 0},
    {"Standard", 10'000'000, 10'000'000, 0},          {"C-Band", 5'150'000, 5'150'000, 0},
    {"Circular 10750", 10'750'000, 10'750'000, 0},    {"Circular 11250", 11'250'000, 11'250'000, 0},
    {"Linear 10700", 10'700'000, 10'700'000, 0},      {"Linear 10750", 10'750'000, 10'750'000, 0},
    {"Linear 11300", 11'300'000, 11'300'000, 0},      {"BS/CS 10678", 10'678'000, 10'678'000, 0},
};

}  // namespace

std::vector<LnbType> WellKnownLnbs() {
  std::vector<LnbType> lnbs;
  for (const Row& row : kRows) {
    lnbs.push_back({row.type, row.low, row.high, row.switchover});
  }
  return lnbs;
}

}  // namespace zortunedex::kit

#include "kit/failure.h"

#include <cstdio>

namespace zortunedex::kit {

namespace {

struct ResultName {
  HRESULT hr;
  const char* name;
};

constexpr ResultName kResults[] = {
    {S_OK, "S_OK"},
    {S_FALSE, "S_FALSE"},
    {E_NOTIMPL, "E_NOTIMPL"},
    {E_NOINTERFACE, "E_NOINTERFACE"},
    {E_POINTER, "E_POINTER"},
    {E_FAIL, "E_FAIL"},
    {E_UNEXPECTED, "E_UNEXPECTED"},
    {E_ACCESSDENIED, "E_ACCESSDENIED"},
    {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
    {E_INVALIDARG, "E_INVALIDARG"},
    {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION"},
    {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE"},
};

}  // namespace

std::string ResultText(HRESULT hr) {
  char number[16];
  std::snprintf(number, sizeof(number), "0x%08X", static_cast<unsigned>(hr));
  for (const ResultName& result : kResults) {
    if (result.hr == hr) return std::string(result.name) + " (" + number + ")";
  }
  return number;
}

}  // namespace zortunedex::kit

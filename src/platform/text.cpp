#include "platform/text.h"

#include <algorithm>

namespace text {
namespace {

bool IsSpace(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

}  // namespace

std::int32_t ToInt(std::string_view decimal) {
  auto next = std::find_if_not(decimal.begin(), decimal.end(), IsSpace);
  const bool isNegative = next != decimal.end() && *next == '-';
  if (next != decimal.end() && (*next == '-' || *next == '+')) ++next;
  std::uint32_t value = 0;
  for (; next != decimal.end() && *next >= '0' && *next <= '9'; ++next) {
    value = value * 10 + static_cast<std::uint32_t>(*next - '0');
  }
  return static_cast<std::int32_t>(isNegative ? 0 - value : value);
}

}  // namespace text

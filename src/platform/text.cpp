#include "platform/text.h"

namespace text {
namespace {

bool IsSpace(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

}  // namespace

std::int32_t ToInt(std::string_view decimal) {
  const char* next = decimal.data();
  const char* const end = next + decimal.size();
  while (next != end && IsSpace(*next)) ++next;
  const bool isNegative = next != end && *next == '-';
  if (next != end && (*next == '-' || *next == '+')) ++next;
  std::uint32_t value = 0;
  for (; next != end && *next >= '0' && *next <= '9'; ++next) {
    value = value * 10 + static_cast<std::uint32_t>(*next - '0');
  }
  return static_cast<std::int32_t>(isNegative ? 0 - value : value);
}

}  // namespace text

#include "kit/interchange/text_parts.h"

#include <algorithm>
#include <charconv>

namespace zortunedex::kit::interchange {

std::string_view TakeUpTo(char separator, std::string_view& rest) {
  const std::size_t end = std::min(rest.find(separator), rest.size());
  const std::string_view text = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return text;
}

std::optional<std::uint64_t> DigitsOf(std::string_view text, int base) {
  std::uint64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value, base);
  if (stopped != end || error == std::errc::invalid_argument) return std::nullopt;
  return error == std::errc() ? value : UINT64_MAX;
}

}  // namespace zortunedex::kit::interchange

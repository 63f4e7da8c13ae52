#include "kit/text/ascii.h"

#include <algorithm>
#include <charconv>

namespace zortunedex::kit {

namespace {

constexpr char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

std::optional<std::int64_t> ParseNumber(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  // from_chars would take a sign of its own here.
  if (text.empty() || text.front() == '-') return std::nullopt;
  std::int64_t value = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, hexadecimal ? 16 : 10);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return negative ? -value : value;
}

std::optional<std::int64_t> ParseNumber(std::string_view text, std::int64_t lowest,
                                        std::int64_t highest) {
  const std::optional<std::int64_t> value = ParseNumber(text);
  return value && *value >= lowest && *value <= highest ? value : std::nullopt;
}

}  // namespace zortunedex::kit

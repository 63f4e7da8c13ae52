#include "kit/check/subject/numbers.h"

namespace zortunedex::kit::check {
namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// As nearly every number stands there: up to nine digits, and no zero in front of others. False,
/// and nothing is done, for any other.
bool ReadShort(std::string_view text, Number& number) {
  constexpr std::size_t kMostDigits = 9;
  if (text.empty() || text.size() > kMostDigits) return false;
  if (text[0] == '0' && text.size() > 1) return false;
  std::int32_t value = 0;
  for (const char digit : text) {
    if (!IsDigit(digit)) return false;
    value = value * 10 + (digit - '0');
  }
  number = {value, Spelling::Plain};
  return true;
}

Number ReadAny(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  bool isExact = at == 0;
  const bool negative = at < text.size() && text[at] == '-';
  const bool plus = at < text.size() && text[at] == '+';
  if (negative || plus) ++at;
  const std::size_t digits = at;
  std::uint32_t bits = 0;
  std::uint64_t magnitude = 0;
  constexpr std::uint64_t kMost = std::uint64_t{1} << 40;
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    const auto digit = static_cast<std::uint32_t>(text[at] - '0');
    bits = bits * 10 + digit;
    magnitude = magnitude < kMost ? magnitude * 10 + digit : magnitude;
  }
  isExact = isExact && at == text.size() && at > digits;
  Number number;
  number.value = static_cast<std::int32_t>(negative ? 0 - bits : bits);
  if (!isExact) return number;
  const std::uint64_t most = negative ? std::uint64_t{1} << 31 : UINT32_MAX;
  const bool isPlain = !plus && (text[digits] != '0' || (at == digits + 1 && !negative));
  number.spelling = magnitude > most ? Spelling::OutOfRange
                    : isPlain        ? Spelling::Plain
                                     : Spelling::Unusual;
  return number;
}

}  // namespace

Number ReadNumber(std::string_view text) {
  Number number;
  return ReadShort(text, number) ? number : ReadAny(text);
}

}  // namespace zortunedex::kit::check

#include "kit/check/subject/base64.h"

#include <cstdint>

namespace zortunedex::kit::check::base64 {
namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::uint32_t BitsOf(char c) {
  const std::size_t place = kAlphabet.find(c);
  return place == std::string_view::npos ? 0 : static_cast<std::uint32_t>(place);
}

}  // namespace

bool IsProper(std::string_view text) {
  if (text.size() % 4 != 0) return false;
  std::size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=') ++padding;
  return text.substr(0, text.size() - padding).find_first_not_of(kAlphabet) ==
         std::string_view::npos;
}

// Line breaks are skipped; behind the first "=" of a group its bytes end.
std::string Decode(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size();) {
    std::uint32_t bits = 0;
    unsigned sextets = 0;
    for (unsigned taken = 0; i < text.size() && taken < 4;) {
      const char c = text[i++];
      if (c == '\r' || c == '\n') continue;
      if (c != '=' && sextets == taken) bits |= BitsOf(c) << (18 - 6 * sextets++);
      ++taken;
    }
    for (unsigned k = 0; k + 1 < sextets; ++k) {
      bytes += static_cast<char>(bits >> (16 - 8 * k) & 0xFF);
    }
  }
  return bytes;
}

}  // namespace zortunedex::kit::check::base64

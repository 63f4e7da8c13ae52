#include "kit/text/columns/display_width.h"

#include <algorithm>
#include <iterator>

#include "kit/text/columns/display_width_table.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::display_width {
namespace {

template <std::size_t Count>
bool Holds(const CharacterRange (&ranges)[Count], std::uint32_t character) {
  const auto* range = std::lower_bound(
      std::begin(ranges), std::end(ranges), character,
      [](const CharacterRange& other, std::uint32_t value) { return other.last < value; });
  return range != std::end(ranges) && range->first <= character;
}

/// Takes one character off the front and answers its columns.
std::size_t Take(std::string_view& utf8) {
  const std::optional<std::uint32_t> character = utf::Next(utf8);
  if (character) return Of(*character);
  utf8.remove_prefix(1);
  return 1;
}

}  // namespace

std::size_t Of(std::uint32_t character) {
  if (character < 0x300) return character == 0 ? 0 : 1;
  if (Holds(kWidthless, character)) return 0;
  return Holds(kWide, character) ? 2 : 1;
}

std::size_t Of(std::string_view utf8) {
  const auto isPlain = [](char unit) { return unit > 0; };
  if (std::all_of(utf8.begin(), utf8.end(), isPlain)) return utf8.size();
  std::size_t columns = 0;
  while (!utf8.empty()) columns += Take(utf8);
  return columns;
}

std::string Cut(std::string_view utf8, std::size_t columns) {
  if (Of(utf8) <= columns) return std::string(utf8);
  if (columns == 0) return {};
  std::size_t used = 0;
  std::string_view rest = utf8;
  for (std::string_view next = rest;; rest = next) {
    used += Take(next);
    if (used > columns - 1) break;
  }
  return std::string(utf8.substr(0, utf8.size() - rest.size())) + "\u2026";
}

}  // namespace zortunedex::kit::display_width

#include "kit/xml/text/characters.h"

#include <algorithm>
#include <iterator>

#include "kit/text/utf.h"

namespace zortunedex::kit::markup {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

// Of the fifth edition of XML 1.0; the colon stands for itself.
constexpr Range kNameStarts[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
// What else a name may hold.
constexpr Range kNameParts[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t N>
bool IsIn(const Range (&ranges)[N], std::uint32_t character) {
  const Range* const found =
      std::lower_bound(std::begin(ranges), std::end(ranges), character,
                       [](const Range& range, std::uint32_t c) { return range.last < c; });
  return found != std::end(ranges) && found->first <= character;
}

bool IsSimpleName(std::string_view text) {
  bool isFirst = true;
  while (!text.empty()) {
    const std::optional<std::uint32_t> character = utf::Next(text);
    if (!character) return false;
    if (!IsNameStart(*character) && (isFirst || !IsIn(kNameParts, *character))) return false;
    isFirst = false;
  }
  return !isFirst;
}

}  // namespace

bool IsNameStart(std::uint32_t character) { return IsIn(kNameStarts, character); }

bool IsQualifiedName(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return IsSimpleName(text);
  return IsSimpleName(text.substr(0, colon)) && IsSimpleName(text.substr(colon + 1));
}

}  // namespace zortunedex::kit::markup

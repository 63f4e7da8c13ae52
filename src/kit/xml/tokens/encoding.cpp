#include "kit/xml/tokens/encoding.h"

#include "kit/xml/text/characters.h"
#include "kit/xml/tokens/declaration.h"

namespace zortunedex::kit::markup {
namespace {

using std::string_view_literals::operator""sv;

struct Beginning {
  std::string_view bytes;
  const char* name;
};

// The longer ones in front.
constexpr Beginning kBeginnings[] = {
    {"\xFF\xFE\0\0"sv, "UTF-32LE"}, {"\0\0\xFE\xFF"sv, "UTF-32BE"}, {"<\0\0\0"sv, "UTF-32LE"},
    {"\0\0\0<"sv, "UTF-32BE"},      {"\xFF\xFE"sv, "UTF-16LE"},     {"\xFE\xFF"sv, "UTF-16BE"},
    {"<\0"sv, "UTF-16LE"},          {"\0<"sv, "UTF-16BE"},
};

}  // namespace

std::string ForeignEncoding(std::string_view bytes) {
  for (const Beginning& beginning : kBeginnings) {
    if (bytes.starts_with(beginning.bytes)) return beginning.name;
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (!bytes.starts_with("<?xml") || bytes.size() == 5 || !Is(bytes[5], kBlankByte)) return {};
  const std::size_t end = bytes.find("?>");
  // One that is longer is broken.
  constexpr std::size_t kLongest = 1000;
  if (end > kLongest) return {};
  const std::string_view name = ReadDeclaration(bytes.substr(0, end + 2)).encoding;
  return IsUtf8Name(name) || IsWideName(name) ? std::string() : std::string(name);
}

}  // namespace zortunedex::kit::markup

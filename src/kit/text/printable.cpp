#include "kit/text/printable.h"

#include <cstdio>

#include "kit/text/utf.h"

namespace zortunedex::kit {

namespace {

void AppendPrintable(std::string& result, std::uint32_t character) {
  if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
    char code[8];
    std::snprintf(code, sizeof(code), "\\x%02X", static_cast<unsigned>(character));
    result += code;
  } else {
    const bool lone = utf::IsHighSurrogate(character) || utf::IsLowSurrogate(character);
    utf::Append(result, lone ? utf::kReplacement : character);
  }
}

}  // namespace

std::string Printable(WideView text) {
  std::string result;
  while (!text.empty()) AppendPrintable(result, utf::Next(text));
  return result;
}

std::string Printable(std::string_view utf8) {
  std::string result;
  while (!utf8.empty()) {
    const std::optional<std::uint32_t> character = utf::Next(utf8);
    if (!character) utf8.remove_prefix(1);
    AppendPrintable(result, character.value_or(utf::kReplacement));
  }
  return result;
}

}  // namespace zortunedex::kit

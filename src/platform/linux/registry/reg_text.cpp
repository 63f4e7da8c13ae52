#include "platform/linux/registry/reg_text.h"

#include <algorithm>

namespace reg_text {
namespace {

char16_t FoldUnit(char16_t unit) {
  const auto isIn = [unit](char16_t first, char16_t last) { return unit >= first && unit <= last; };
  if (isIn(u'A', u'Z')) return static_cast<char16_t>(unit + 0x20);
  if (unit < 0xC0) return unit;
  if (isIn(0x00C0, 0x00DE) && unit != 0x00D7) return static_cast<char16_t>(unit + 0x20);
  if (isIn(0x0391, 0x03A9) || isIn(0x0410, 0x042F)) return static_cast<char16_t>(unit + 0x20);
  if (isIn(0x0400, 0x040F)) return static_cast<char16_t>(unit + 0x50);
  return unit;
}

int DigitOf(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  return -1;
}

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\r'; }

}  // namespace

std::u16string Fold(std::u16string_view name) {
  std::u16string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), FoldUnit);
  return folded;
}

std::u16string_view Trim(std::u16string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::u16string Quote(std::u16string_view text) {
  std::u16string quoted = u"\"";
  for (const char16_t unit : text) {
    if (unit == u'"' || unit == u'\\') quoted += u'\\';
    quoted += unit;
  }
  return quoted += u'"';
}

bool NeedsHex(std::u16string_view text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x20; });
}

std::u16string ToHex(std::u16string_view prefix, std::string_view bytes) {
  static constexpr char16_t kDigits[] = u"0123456789abcdef";
  std::u16string hex(prefix);
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    const unsigned byte = static_cast<unsigned char>(bytes[index]);
    if (index != 0) hex += u',';
    hex += kDigits[byte >> 4];
    hex += kDigits[byte & 0xFU];
  }
  return hex;
}

std::optional<std::string> FromHex(std::u16string_view digits) {
  std::string bytes;
  while (!(digits = Trim(digits)).empty()) {
    const std::size_t comma = std::min(digits.find(u','), digits.size());
    const std::u16string_view number = Trim(digits.substr(0, comma));
    if (number.empty() || number.size() > 2) return std::nullopt;
    int byte = 0;
    for (const char16_t unit : number) {
      if (DigitOf(unit) < 0) return std::nullopt;
      byte = byte * 16 + DigitOf(unit);
    }
    bytes += static_cast<char>(byte);
    digits.remove_prefix(std::min(comma + 1, digits.size()));
  }
  return bytes;
}

std::string ToBytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

std::u16string FromBytes(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
    const unsigned low = static_cast<unsigned char>(bytes[index]);
    const unsigned high = static_cast<unsigned char>(bytes[index + 1]);
    text += static_cast<char16_t>(low | high << 8);
  }
  return text;
}

}  // namespace reg_text

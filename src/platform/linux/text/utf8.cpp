#include "platform/linux/text/utf8.h"

namespace utf8 {
namespace {

unsigned ByteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool IsContinuation(unsigned byte) { return (byte & 0xC0U) == 0x80U; }

struct Lead {
  std::size_t length = 0;  ///< 0: no character begins with this byte
  unsigned lowest = 0x80;  ///< range of the second byte
  unsigned highest = 0xBF;
};

Lead LeadOf(unsigned byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {2};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {4};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {};
}

bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

Character First(std::string_view text) {
  const unsigned first = ByteAt(text, 0);
  if (first < 0x80) return {first, 1};
  const Lead lead = LeadOf(first);
  if (lead.length == 0) return {kReplacement, 1};
  char32_t code = first & (0x7FU >> lead.length);
  for (std::size_t index = 1; index < lead.length; ++index) {
    if (index == text.size()) return {kReplacement, index};
    const unsigned byte = ByteAt(text, index);
    const bool fits =
        index == 1 ? byte >= lead.lowest && byte <= lead.highest : IsContinuation(byte);
    if (!fits) return {kReplacement, index};
    code = code << 6 | (byte & 0x3FU);
  }
  return {code, lead.length};
}

void Append(std::string& text, char32_t code) {
  const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

std::string FromWide(std::u16string_view wide) {
  std::string text;
  text.reserve(wide.size() + wide.size() / 2);
  for (std::size_t index = 0; index < wide.size(); ++index) {
    char32_t code = wide[index];
    if (IsHigh(code) && index + 1 < wide.size() && IsLow(wide[index + 1])) {
      code = 0x10000 + ((code - 0xD800) << 10) + (wide[++index] - 0xDC00U);
    } else if (IsHigh(code) || IsLow(code)) {
      code = kReplacement;
    }
    Append(text, code);
  }
  return text;
}

std::u16string ToWide(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const Character next = First(text);
    if (next.code < 0x10000) {
      wide += static_cast<char16_t>(next.code);
    } else {
      wide += static_cast<char16_t>(0xD800 + ((next.code - 0x10000) >> 10));
      wide += static_cast<char16_t>(0xDC00 + (next.code & 0x3FF));
    }
    text.remove_prefix(next.length);
  }
  return wide;
}

std::size_t CutLength(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text.size();
  // A byte that is no continuation begins a character, also in ill-formed text; the nearest one
  // decides.
  std::size_t begin = limit;
  while (begin > 0 && limit - begin < 3 && IsContinuation(ByteAt(text, begin))) --begin;
  return begin + First(text.substr(begin)).length > limit ? begin : limit;
}

}  // namespace utf8

#include "kit/check/subject/encodings.h"

#include <algorithm>

#include "kit/text/ascii.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::check {
namespace {

std::optional<std::string> FromUtf16(std::string_view bytes, bool isBigEnd) {
  if (bytes.size() % 2 != 0) return std::nullopt;
  const auto byte = [&bytes](std::size_t i) {
    return static_cast<unsigned>(static_cast<unsigned char>(bytes[i]));
  };
  WideText wide;
  wide.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const unsigned unit = isBigEnd ? byte(i) << 8 | byte(i + 1) : byte(i + 1) << 8 | byte(i);
    wide.push_back(static_cast<OLECHAR>(unit));
  }
  std::string utf8;
  for (WideView rest = wide; !rest.empty();) {
    const std::uint32_t character = utf::Next(rest);
    if (utf::IsHighSurrogate(character) || utf::IsLowSurrogate(character)) return std::nullopt;
    utf::Append(utf8, character);
  }
  return utf8;
}

std::string FromLatin1(std::string_view bytes) {
  std::string utf8;
  for (const char c : bytes) utf::Append(utf8, static_cast<unsigned char>(c));
  return utf8;
}

/// The declaration says UTF-8.
std::string Declared(std::string text) {
  const std::size_t end = text.find("?>");
  const std::size_t name = text.find("encoding");
  if (!text.starts_with("<?xml") || end == std::string::npos || name > end) return text;
  const std::size_t open = text.find_first_of("\"'", name);
  const std::size_t close = open < end ? text.find(text[open], open + 1) : std::string::npos;
  if (close < end) text.replace(open + 1, close - open - 1, "utf-8");
  return text;
}

}  // namespace

std::optional<std::string> ToUtf8(std::string_view bytes, std::string_view encoding) {
  std::optional<std::string> text;
  if (encoding == "UTF-16LE") {
    text = FromUtf16(bytes.substr(bytes.starts_with("\xFF\xFE") ? 2 : 0), false);
  } else if (encoding == "UTF-16BE") {
    text = FromUtf16(bytes.substr(bytes.starts_with("\xFE\xFF") ? 2 : 0), true);
  } else if (EqualIgnoringCase(encoding, "ISO-8859-1") || EqualIgnoringCase(encoding, "US-ASCII")) {
    text = FromLatin1(bytes);
  }
  if (text) text = Declared(std::move(*text));
  return text;
}

}  // namespace zortunedex::kit::check

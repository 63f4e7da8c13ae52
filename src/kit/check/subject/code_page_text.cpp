#include "kit/check/subject/code_page_text.h"

#include <algorithm>

namespace zortunedex::kit::check {
namespace {

// Attributes are read into 260 bytes, base64 into twice as many, which is ASCII.
constexpr std::size_t kMostUnits = 300;
constexpr std::size_t kMostKnown = 100000;

bool IsUtf8(const NarrowText& narrow) {
  const OLECHAR euro[] = {0x20AC};
  return narrow.FromWide({euro, 1}) == "\xE2\x82\xAC";
}

/// Characters of well-formed UTF-8, and U+FFFD for the rest.
WideText Wide(std::string_view utf8) {
  WideText wide;
  while (!utf8.empty() && wide.size() < kMostUnits) {
    const std::optional<std::uint32_t> character = utf::Next(utf8);
    if (!character) utf8.remove_prefix(1);
    std::string one;
    utf::Append(one, character.value_or(utf::kReplacement));
    wide += *utf::ToWide(one);
  }
  return wide;
}

/// Length of the beginning of UTF-8 that has at most so many bytes and whole characters.
std::size_t Utf8CutLength(std::string_view utf8, std::size_t limit) {
  if (utf8.size() <= limit) return utf8.size();
  while (limit > 0 && (static_cast<unsigned char>(utf8[limit]) & 0xC0) == 0x80) --limit;
  return limit;
}

}  // namespace

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

CodePageText::CodePageText(const Database& database)
    : m_narrow(database), m_isUtf8(IsUtf8(m_narrow)) {}

CodePageText::Narrow CodePageText::Convert(WideView wide) {
  const std::optional<std::string> exact = m_narrow.FromWide(wide);
  return exact ? Narrow{*exact, true} : Narrow{m_narrow.Replacing(wide), false};
}

CodePageText::Narrow CodePageText::Of(std::string_view utf8) {
  if (m_isUtf8 || IsAscii(utf8)) return {std::string(utf8), true};
  const std::string key(utf8.substr(0, 4 * kMostUnits));
  const auto known = m_known.find(key);
  if (known != m_known.end()) return known->second;
  Narrow narrow = Convert(Wide(utf8));
  if (m_known.size() < kMostKnown) m_known.emplace(key, narrow);
  return narrow;
}

std::string_view CodePageText::Cut(std::string_view utf8, std::size_t limit, std::string& room) {
  if (IsAscii(utf8)) return utf8.substr(0, limit);
  if (m_isUtf8) return utf8.substr(0, Utf8CutLength(utf8, limit));
  room = Of(utf8).bytes;
  if (room.size() <= limit) return room;
  const WideText wide = Wide(utf8);
  std::size_t fits = 0;
  for (std::size_t beyond = wide.size(); beyond - fits > 1;) {
    const std::size_t middle = fits + (beyond - fits) / 2;
    const bool isIn = Convert(WideView(wide).substr(0, middle)).bytes.size() <= limit;
    (isIn ? fits : beyond) = middle;
  }
  room = Convert(WideView(wide).substr(0, fits)).bytes;
  return room;
}

std::string_view CodePageText::CutNarrow(std::string_view narrow, std::size_t limit) {
  if (narrow.size() <= limit) return narrow;
  if (m_isUtf8) return narrow.substr(0, Utf8CutLength(narrow, limit));
  std::string room;
  return narrow.substr(0, Cut(utf::FromWide(m_narrow.ToWide(narrow)), limit, room).size());
}

WideText CodePageText::ToWide(std::string_view narrow) {
  if (IsAscii(narrow)) return WideText(narrow.begin(), narrow.end());
  return m_narrow.ToWide(narrow);
}

std::optional<std::string> CodePageText::Decode(std::string_view narrow) {
  std::string utf8;
  // As much at once as there is room for; a cut may fall into a character, so less is tried then.
  while (!narrow.empty()) {
    std::size_t length = std::min<std::size_t>(narrow.size(), NarrowText::kLimit / 4);
    std::optional<std::string> part;
    for (int attempt = 0; attempt < 4 && length > 0 && !part; ++attempt, --length) {
      const std::string_view bytes = narrow.substr(0, length);
      const WideText wide = m_narrow.ToWide(bytes);
      if (m_narrow.FromWide(wide) == bytes) part = utf::FromWide(wide);
      if (part) narrow.remove_prefix(length);
    }
    if (!part) return std::nullopt;
    utf8 += *part;
  }
  return utf8;
}

}  // namespace zortunedex::kit::check

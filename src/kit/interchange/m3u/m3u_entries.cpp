#include "kit/interchange/m3u/m3u_entries.h"

#include <algorithm>
#include <utility>

#include "kit/text/ascii.h"

namespace zortunedex::kit::interchange::m3u {
namespace {

/// 0 for what is no number of a channel.
std::uint32_t ChannelNumber(std::string_view text) {
  const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == text.npos;
  return isNumber ? static_cast<std::uint32_t>(ParseNumber(text, 0, UINT32_MAX).value_or(0)) : 0;
}

/// Also in the other spelling.
bool HasFavorites(std::string_view groups) {
  while (!groups.empty()) {
    const std::size_t end = groups.find(';');
    const std::string_view group = groups.substr(0, end);
    if (EqualIgnoringCase(group, kFavorites) || EqualIgnoringCase(group, "Favorites")) return true;
    groups.remove_prefix(end == std::string_view::npos ? groups.size() : end + 1);
  }
  return false;
}

bool IsTriplet(std::string_view text) {
  return std::ranges::count(text, '-') == 2 && text.find_first_not_of("0123456789-") == text.npos &&
         text.find("--") == text.npos && text.front() != '-' && text.back() != '-';
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

}  // namespace

std::optional<Entry> EntryLines::Next() {
  while (const std::optional<TextLine> line = m_lines.Next()) {
    if (std::optional<Entry> entry = Take(*line)) return entry;
  }
  return std::exchange(m_begun, std::nullopt);
}

std::optional<Entry> EntryLines::Take(const TextLine& line) {
  if (line.text.empty()) return std::nullopt;
  std::string_view text = line.text;
  if (TakePrefix(text, "#EXTINF:")) {
    m_isKnown = true;
    std::optional<Entry> whole = std::exchange(m_begun, Entry{});
    m_begun->line = line.number;
    TakeHead(text);
    return whole;
  }
  if (text.starts_with('#')) {
    TakeDirective(line);
    return std::nullopt;
  }
  if (m_begun) return std::exchange(m_begun, std::nullopt);
  return TakeNumbered(line);
}

/// Comments are left alone, and so is how to play.
void EntryLines::TakeDirective(const TextLine& line) {
  std::string_view text = line.text;
  if (text.starts_with("#EXTM3U")) {
    m_isKnown = true;
  } else if (TakePrefix(text, "#EXTGRP:")) {
    if (m_begun && HasFavorites(text)) m_begun->isFavorite = true;
  } else if (text.starts_with("#EXT") && !text.starts_with("#EXTVLCOPT:")) {
    m_losses.Add(Code::KeyUnknown, "directive", {std::nullopt, {}, line.number},
                 std::string(text.substr(0, text.find(':'))));
  }
}

/// `-1 tvg-chno="5" group-title="TV",Name`: blanks may be left out before the comma.
void EntryLines::TakeHead(std::string_view text) {
  // The length.
  text.remove_prefix(std::min(text.find_first_of(" ,"), text.size()));
  while (!text.empty() && text.front() != ',') {
    if (text.front() == ' ') {
      text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
      continue;
    }
    const std::size_t keyEnd = std::min(text.find_first_of("= ,"), text.size());
    const std::string_view key = text.substr(0, keyEnd);
    text.remove_prefix(keyEnd);
    if (!text.starts_with('=')) continue;
    text.remove_prefix(1);
    const bool isQuoted = TakePrefix(text, "\"");
    const std::size_t end = std::min(text.find_first_of(isQuoted ? "\"" : " ,"), text.size());
    TakeAttribute(key, text.substr(0, end));
    text.remove_prefix(isQuoted && end < text.size() ? end + 1 : end);
  }
  if (!text.empty()) text.remove_prefix(1);
  m_begun->title = text;
}

void EntryLines::TakeAttribute(std::string_view key, std::string_view value) {
  if (key == "tvg-chno") {
    m_begun->number = ChannelNumber(value);
  } else if (key == "tvg-id") {
    m_begun->id = value;
  } else if (key == "tvg-name") {
    m_begun->name = value;
  } else if (key == "group-title") {
    m_begun->isFavorite = m_begun->isFavorite || HasFavorites(value);
  } else if (key != "radio") {
    m_losses.Add(Code::KeyUnknown, "attribute", {std::nullopt, {}, m_begun->line},
                 std::string(key));
  }
}

std::optional<Entry> EntryLines::TakeNumbered(const TextLine& line) {
  const std::size_t first = line.text.find(';');
  const std::size_t last = line.text.rfind(';');
  Entry entry;
  entry.line = line.number;
  if (first != last) {
    entry.number = ChannelNumber(line.text.substr(0, first));
    entry.title = line.text.substr(first + 1, last - first - 1);
    entry.triplet = line.text.substr(last + 1);
  }
  if (entry.number == 0 || entry.triplet.empty() || !IsTriplet(entry.triplet)) {
    m_losses.Add(Code::LineNotUnderstood, "line", {std::nullopt, {}, line.number});
    return std::nullopt;
  }
  m_isKnown = true;
  return entry;
}

}  // namespace zortunedex::kit::interchange::m3u

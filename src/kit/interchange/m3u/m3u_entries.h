// The entries of a playlist, and of a list of numbers, names and identifiers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "kit/interchange/loss.h"
#include "kit/interchange/text_lines.h"

namespace zortunedex::kit::interchange::m3u {

/// The group of favourites.
inline constexpr const char kFavorites[] = "Favourites";

struct Entry {
  std::size_t line = 0;
  std::uint32_t number = 0;  ///< 0: none
  std::string id;            ///< of a playlist
  std::string triplet;       ///< network, transport stream and service of an editor's list
  std::string name;          ///< of the broadcaster; empty: none
  std::string title;         ///< that is shown
  bool isFavorite = false;
};

/// Takes a file apart, each byte looked at once. An entry of a playlist is a line "#EXTINF" and the
/// address behind it; one of an editor's list is "NUMBER;NAME;ONID-TSID-SID". Keys that are not
/// known (L502) and lines that are neither (L501) are losses.
class EntryLines {
 public:
  /// Both outlive the lines.
  EntryLines(std::string_view text, Losses& losses) : m_lines(text), m_losses(losses) {}

  std::optional<Entry> Next();
  /// Whether anything of a playlist or an editor's list has stood there so far.
  bool IsKnown() const { return m_isKnown; }

 private:
  std::optional<Entry> Take(const TextLine& line);
  void TakeDirective(const TextLine& line);
  void TakeHead(std::string_view text);
  void TakeAttribute(std::string_view key, std::string_view value);
  std::optional<Entry> TakeNumbered(const TextLine& line);

  TextLines m_lines;
  Losses& m_losses;
  std::optional<Entry> m_begun;  ///< its address is still to come
  bool m_isKnown = false;
};

}  // namespace zortunedex::kit::interchange::m3u

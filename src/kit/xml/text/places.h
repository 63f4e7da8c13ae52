#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zortunedex::kit::markup {

/// Both count from 1; columns count characters. CR LF, LF and CR end a line.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const Place&) const = default;
};

/// Finds lines and columns of the same text over and over, however long its lines are.
class Places {
 public:
  /// The text has to stay.
  explicit Places(std::string_view text);

  /// Of the byte at an offset, or of the end for one beyond it. A byte order mark takes no column.
  Place Of(std::size_t offset) const;

 private:
  void Advance(Place& place, std::size_t from, std::size_t to) const;

  static constexpr std::size_t kStep = 4096;

  std::string_view m_text;
  std::vector<Place> m_marks;  ///< at every kStep bytes
};

}  // namespace zortunedex::kit::markup

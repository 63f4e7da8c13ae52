#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zortunedex::kit::markup {

/// Where something stands in the bytes of a file: from `begin` up to `end`, which is behind it.
/// Files are below two gigabytes (kLargestFile).
struct Span {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  constexpr Span() = default;
  constexpr Span(std::size_t first, std::size_t last)
      : begin(static_cast<std::uint32_t>(first)), end(static_cast<std::uint32_t>(last)) {}

  constexpr std::size_t Size() const { return end - begin; }
  constexpr bool IsEmpty() const { return begin == end; }
  constexpr bool Contains(Span other) const { return begin <= other.begin && other.end <= end; }
  constexpr std::string_view In(std::string_view bytes) const {
    return bytes.substr(begin, Size());
  }
  constexpr bool operator==(const Span&) const = default;
};

inline constexpr std::size_t kLargestFile = 0x7FFFFFFE;

}  // namespace zortunedex::kit::markup

// How many columns of a terminal a text takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zortunedex::kit::display_width {

/// 0, 1 or 2. Characters whose width depends on the font are narrow.
std::size_t Of(std::uint32_t character);
/// Sum over UTF-8; a byte that is none counts as one column.
std::size_t Of(std::string_view utf8);

/// A text of at most `columns` columns: the text, or its beginning and an ellipsis. Never cut
/// between a character and the marks that combine with it.
std::string Cut(std::string_view utf8, std::size_t columns);

}  // namespace zortunedex::kit::display_width

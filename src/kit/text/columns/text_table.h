#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zortunedex::kit {

/// Rows under a head line, one line each. Columns are padded to the same number of terminal
/// columns, but for the last one, with two blanks between them.
///
/// With a line width, lines are made to fit it: first headings are shortened down to what stands
/// below them, then the widest columns with texts, then, where that is not enough, all others. What
/// was shortened ends in an ellipsis. Every column keeps one place: lines of a width that has no
/// room for that are longer.
std::string TextTable(const std::vector<std::vector<std::string>>& rows,
                      std::optional<std::size_t> lineWidth = std::nullopt);

}  // namespace zortunedex::kit

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zortunedex::kit {

/// The words of a command line, quoted as in a POSIX shell: blanks part words; everything in single
/// quotes stands for itself; in double quotes a backslash takes the meaning from $, `, " and \;
/// outside of quotes from any character. Nothing is replaced: $, * and the like are characters.
/// Nothing when a quotation is not closed or nothing stands behind a backslash.
std::optional<std::vector<std::string>> CommandWords(std::string_view line);

}  // namespace zortunedex::kit

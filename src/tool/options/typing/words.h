// The words that options and arguments take.
#pragma once

#include <string>
#include <vector>

namespace zortunedex::kit::tool {

/// The words of an option ("--service") or of an argument ("KEY"), those that are plainly named
/// alone: numbers are not listed. Empty where any text may stand.
std::vector<std::string> WordsOf(const std::string& option);
/// --format has words of its own where a list leaves or enters.
inline constexpr const char* kListFormat = "--format of a list";

/// "'soap' is not known; the nearest is ...; known are tv, radio, ...", for a word that is none of
/// these.
std::string UnknownWord(const std::string& word, const std::vector<std::string>& known);

}  // namespace zortunedex::kit::tool

// What the commands print.
#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "kit/failure.h"
#include "kit/text/printable.h"

namespace zortunedex::kit::tool {

/// Rows under a head line; they fit the terminal where standard output is one.
void PrintTable(const std::vector<std::vector<std::string>>& rows);

/// Control characters are escaped, all of them.
void PrintJson(const nlohmann::ordered_json& value);
/// The same of a value that is written already.
void PrintJsonText(std::string_view json);
/// The same as of an array of `count` values, which are made one after the other.
void PrintJsonArray(std::size_t count,
                    const std::function<nlohmann::ordered_json(std::size_t)>& value);

/// A note on standard error.
void PrintNote(const std::string& note);

/// What was printed did not all reach its target.
struct UnwrittenOutput : Failure {
  using Failure::Failure;
};

/// Raises UnwrittenOutput when what was printed did not reach its target.
void FinishOutput();

}  // namespace zortunedex::kit::tool

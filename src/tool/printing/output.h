// What the commands print.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "kit/failure.h"
#include "kit/text/printable.h"

/// Rows under a head line. Columns are padded to the same number of characters, but for the last
/// one.
void PrintTable(const std::vector<std::vector<std::string>>& rows);

/// Control characters are escaped, all of them.
void PrintJson(const nlohmann::ordered_json& value);

/// A note on standard error.
void PrintNote(const std::string& note);

/// What was printed did not all reach its target.
struct UnwrittenOutput : Failure {
  using Failure::Failure;
};

/// Raises UnwrittenOutput when what was printed did not reach its target.
void FinishOutput();

// What the commands print.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "platform/bstr.h"

/// Wide text as UTF-8, control characters as \xNN: names come from files and go to terminals.
std::string Printable(WideView text);
/// The same for UTF-8; bytes that are none come as U+FFFD.
std::string Printable(std::string_view utf8);

/// Rows under a head line. Columns are padded to the same number of characters, but for the last
/// one.
void PrintTable(const std::vector<std::vector<std::string>>& rows);

/// Control characters are escaped, all of them.
void PrintJson(const nlohmann::ordered_json& value);

/// Raises a Failure when what was printed did not reach its target.
void FinishOutput();

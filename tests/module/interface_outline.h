// What an IDL and the header declare, in one form that can be compared line by line.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "module/header_text.h"

/// By "interface NAME", "enum NAME", "struct NAME" and "library NAME": its lines. The first line of
/// an interface has its attributes and its base; methods follow in the order of their slots.
using Outline = std::map<std::string, std::vector<std::string>>;

/// Raises std::runtime_error where the text is none that it knows.
Outline OutlineOfIdl(std::string_view text);

/// What an IDL has to declare.
Outline OutlineOf(const HeaderText& header);

/// A line for each declaration that is missing, too many or different, with the first line of it
/// that differs.
std::vector<std::string> Differences(const Outline& idl, const Outline& header);

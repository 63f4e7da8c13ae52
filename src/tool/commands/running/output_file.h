#pragma once

#include <string>
#include <string_view>

namespace zortunedex::kit::tool {

/// Raises a Failure when something stands at the path (UTF-8) and may not be replaced.
void RequireFree(const std::string& path, bool force);

/// Writes a file as a whole or not at all, and over an existing one only with `force`. Raises a
/// Failure when the file is not there with these bytes afterwards.
void WriteOutput(const std::string& path, std::string_view bytes, bool force);

}  // namespace zortunedex::kit::tool

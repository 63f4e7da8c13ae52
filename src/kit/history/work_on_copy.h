#pragma once

#include <functional>
#include <string>

namespace zortunedex::kit::history {

/// Runs work on a copy of a directory. What it raises of the kit's own names the directory where it
/// named the copy, and says of a save that failed that the file is unchanged.
void RunOnCopyOf(const std::string& directory, const std::string& scratch,
                 const std::function<void(const std::string& scratch)>& work);

}  // namespace zortunedex::kit::history

// Checks of the whole file before a save.
#pragma once

#include <string>

#include "kit/model/database.h"

namespace zortunedex::kit::file_check {

/// Raises a Failure when the file, or the country that a save would add to it, holds a value that
/// the pre-formatted form cannot keep. What the location's own list writes is not looked at: that
/// is checked channel by channel.
void RequirePreFormattable(const Location& location);
/// The same for every value of the file.
void RequirePreFormattable(const std::string& directory);

}  // namespace zortunedex::kit::file_check

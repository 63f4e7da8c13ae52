#pragma once

#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace zortunedex::kit {

/// Wide text as UTF-8, control characters as \xNN: names come from files and go to terminals.
std::string Printable(WideView text);
/// The same for UTF-8; bytes that are none come as U+FFFD.
std::string Printable(std::string_view utf8);

}  // namespace zortunedex::kit

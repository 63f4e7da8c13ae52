#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zortunedex::kit::check {

/// A file in another encoding as UTF-8, its declaration with it; nothing for an encoding that is
/// not known here, and for bytes that are no text in it. UTF-16 and ISO-8859-1 are known.
std::optional<std::string> ToUtf8(std::string_view bytes, std::string_view encoding);

}  // namespace zortunedex::kit::check

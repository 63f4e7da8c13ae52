#pragma once

#include <string_view>

namespace zortunedex::kit::markup {

/// An absolute or a relative reference, as RFC 3986 has it; namespaces are named by such.
bool IsUriReference(std::string_view text);

}  // namespace zortunedex::kit::markup

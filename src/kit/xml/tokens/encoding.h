#pragma once

#include <string>
#include <string_view>

namespace zortunedex::kit::markup {

/// Name of the encoding that the first bytes of a file tell, or the name in its XML declaration;
/// empty for UTF-8 and for a file that names none. A declaration that names UTF-16 or the like in
/// front of bytes that are not is wrong and tells nothing.
std::string ForeignEncoding(std::string_view bytes);

}  // namespace zortunedex::kit::markup

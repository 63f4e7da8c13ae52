// Conversions with a stated Windows code page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace code_page {

/// Raises ComError when there is no memory or the text is longer than Windows converts at once.
Bstr Widen(UINT codePage, std::string_view narrow);
std::string Narrow(UINT codePage, WideView wide);

/// text::CutLength for a code page.
std::size_t CutLength(UINT codePage, std::string_view narrow, std::size_t limit);

}  // namespace code_page

// Conversions with a stated code page, whatever that of the process is.
#pragma once

#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace stated_page {

/// One character; U+FFFD for a code that has none.
Bstr Widen(UINT page, std::string_view code);

/// Of what the page lacks a mark, or what looks like it.
std::string Narrow(UINT page, WideView wide);

}  // namespace stated_page

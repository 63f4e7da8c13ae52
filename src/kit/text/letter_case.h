#pragma once

#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace zortunedex::kit {

/// A text in which capital and small letters are the same: ASCII, Latin with marks, Greek,
/// Cyrillic, Armenian and full-width Latin, letter by letter. A sharp s stays one, and so do
/// characters that combine marks of their own.
std::basic_string<OLECHAR> WithoutCase(WideView text);

/// True when a text holds another one, whatever the case of their letters.
bool HoldsIgnoringCase(WideView text, WideView part);

}  // namespace zortunedex::kit

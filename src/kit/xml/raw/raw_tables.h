#pragma once

#include <string_view>
#include <vector>

#include "core/interfaces.h"
#include "kit/xml/raw/raw_markup.h"

namespace zortunedex::kit::markup {

/// The attributes of an element of ChanInfo.xml, in the order in which the library writes them;
/// empty for what has none. `signal` is that of the channel set around it.
RawTable RawTableOf(std::string_view element, InputSignalType signal);

}  // namespace zortunedex::kit::markup

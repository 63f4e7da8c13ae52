#pragma once

#include <string>

/// What a file in the pre-formatted form begins with.
inline const std::string kHeader = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";

#pragma once

namespace os {

/// True on the Windows 95 family, which keeps its country names elsewhere. Never on Linux.
bool IsWindows9x();

}  // namespace os

// For host programs: what a thread that works for another one takes over from it, so that narrow
// texts become wide as they do there.
//
//   const ThreadLocale locale;   // on the one thread
//   locale.TakeOver();           // on the other
#pragma once

#ifdef _WIN32
#include "platform/windows/thread_locale.h"
#else
#include "platform/linux/thread_locale.h"
#endif

#pragma once

#include "platform/com.h"

/// See platform/thread_locale.h. A new thread begins with the user's locale.
class ThreadLocale {
 public:
  void TakeOver() const { SetThreadLocale(m_locale); }

 private:
  const LCID m_locale = GetThreadLocale();
};

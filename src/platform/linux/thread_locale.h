#pragma once

/// See platform/thread_locale.h. The code page is that of the process.
class ThreadLocale {
 public:
  void TakeOver() const {}
};

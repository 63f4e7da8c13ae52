#pragma once

#include <stdexcept>

#include "platform/com.h"

/// Another code page while it lives, then UTF-8 again.
class CodePageScope {
 public:
  explicit CodePageScope(UINT page) {
    if (ZorTunedexSetCodePage(page) != S_OK) throw std::runtime_error("no such code page");
  }
  CodePageScope(const CodePageScope&) = delete;
  CodePageScope& operator=(const CodePageScope&) = delete;
  ~CodePageScope() { ZorTunedexSetCodePage(65001); }
};

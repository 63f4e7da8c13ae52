// Tests of one ANSI code page.
#pragma once

#include <gtest/gtest.h>

#include "platform/com.h"

/// Linux: makes it the code page of the process. Windows: true when the process has it, which is
/// decided before it starts.
bool ChooseCodePage(UINT page);

/// On Windows the programs run once in each of the pages (see tests/code_pages.cmake); tests of the
/// other pages are skipped.
template <UINT kPage>
class InCodePage : public testing::Test {
 protected:
  void SetUp() override {
    if (!ChooseCodePage(kPage)) GTEST_SKIP() << "needs a process in code page " << kPage;
  }
  void TearDown() override { ChooseCodePage(65001); }
};

#include "platform/critical_section.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(CriticalSection, ItsOwnThreadMayTakeItAgain) {
  CriticalSection lock;
  EXPECT_EQ(0, lock.Depth());
  {
    const std::lock_guard<CriticalSection> outer(lock);
    EXPECT_EQ(1, lock.Depth());
    const std::lock_guard<CriticalSection> inner(lock);
    EXPECT_EQ(2, lock.Depth());
  }
  EXPECT_EQ(0, lock.Depth());
}

TEST(CriticalSection, KeepsOtherThreadsOut) {
  CriticalSection lock;
  int value = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 1000; ++i) {
        const std::lock_guard<CriticalSection> guard(lock);
        ++value;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(4000, value);
  EXPECT_EQ(0, lock.Depth());
}

}  // namespace

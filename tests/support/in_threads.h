#pragma once

#include <functional>
#include <thread>
#include <vector>

#include "platform/com.h"

constexpr UINT kThreads = 8;

/// Does the work in as many threads, numbered from 0, and waits for all of them.
inline void InThreads(const std::function<void(UINT number)>& work) {
  std::vector<std::thread> threads;
  for (UINT number = 0; number < kThreads; ++number) threads.emplace_back(work, number);
  for (std::thread& thread : threads) thread.join();
}

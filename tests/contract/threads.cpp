#include "contract/threads.h"

#include <atomic>
#include <thread>
#include <vector>

#include "platform/host.h"

void InThreads(const std::function<void(unsigned number)>& work) {
  std::atomic<unsigned> waiting{kThreads};
  std::vector<std::thread> threads;
  for (unsigned number = 0; number < kThreads; ++number) {
    threads.emplace_back([&waiting, &work, number] {
      host::Prepare();
      --waiting;
      while (waiting != 0) std::this_thread::yield();
      work(number);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// Values are read on several threads.
#include <atomic>
#include <thread>
#include <vector>

#include "api/api_home.h"

namespace {

TEST(ApiThreads, ValuesMayBeReadOnSeveralThreads) {
  const ApiHome home;
  const zortunedex::database db = home.Satellite();
  std::string expected;
  for (const zortunedex::channel& c : db.channels()) expected += c.name() + c.get<"networkName">();
  std::atomic<int> same{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      const zortunedex::channel_view channels = db.channels();
      std::string found;
      int services = 0;
      for (const zortunedex::channel& c : channels) {
        const zortunedex::channel copy = c;
        found += copy.name() + copy.get<"networkName">();
        services += copy.service() == zortunedex::service::digital_tv ? 1 : 0;
      }
      if (found == expected && services == 47) ++same;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(4, same);
}

}  // namespace

// Where a check cannot have a second thread, and where the reading on that thread fails.
//
// Linux only: processors, threads and sizes of files are taken away from a process there
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>

#include <csignal>

#include "kit/check/found_in_turn.h"
#include "kit/failure.h"
#include "kit/home.h"
#include "support/linux/child.h"

namespace zortunedex::kit {

namespace {

/// Samples with something to be found.
class ReadHome {
 public:
  ReadHome() {
    std::string bytes = m_home.Channels();
    const std::string frequency = "freq=\"";
    bytes.insert(bytes.find(frequency) + frequency.size(), "x");
    m_home.Files().Write("ChanInfo.xml", bytes);
  }

  std::string Path() const { return m_home.Path(); }
  std::string Found() const { return TextOfFindings(check::CheckDirectory(m_home.Path(), {})); }

 private:
  Home m_home;
};

TEST(CheckInTurn, OnOneProcessor) {
  const ReadHome home;
  const std::string expected = home.Found();
  EXPECT_NE("[]", expected);
  EXPECT_TRUE(InChild([&] {
    cpu_set_t processors;
    if (sched_getaffinity(0, sizeof(processors), &processors) != 0) return false;
    int one = 0;
    while (!CPU_ISSET(one, &processors)) ++one;
    CPU_ZERO(&processors);
    CPU_SET(one, &processors);
    return sched_setaffinity(0, sizeof(processors), &processors) == 0 && home.Found() == expected;
  }));
}

TEST(CheckInTurn, WhereNoThreadCanBeStarted) {
  const ReadHome home;
  const std::string expected = home.Found();
  EXPECT_TRUE(InChild([&] {
    // A stack that no memory has room for.
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    constexpr std::size_t kTooMuch = std::size_t{1} << 47;
    if (pthread_attr_setstacksize(&attributes, kTooMuch) != 0) return false;
    if (pthread_setattr_default_np(&attributes) != 0) return false;
    pthread_t thread;
    const auto nothing = [](void* word) { return word; };
    if (pthread_create(&thread, nullptr, nothing, nullptr) == 0) return false;
    return home.Found() == expected;
  }));
}

TEST(CheckInTurn, FailuresOfTheOtherReadingComeOut) {
  const ReadHome home;
  EXPECT_TRUE(InChild([&] {
    const rlimit limit = {16, 16};
    signal(SIGXFSZ, SIG_IGN);
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
    try {
      check::CheckDirectory(home.Path(), {});
    } catch (const Failure& failure) {
      return std::string(failure.what()) ==
             "ChanInfo.xml cannot be copied to a temporary directory";
    }
    return false;
  }));
}

}  // namespace

}  // namespace zortunedex::kit

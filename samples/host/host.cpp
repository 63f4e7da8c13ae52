// Counts the television channels of a data directory.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <zortunedex/zortunedex.hpp>

int main(int argc, char** argv) try {
  const auto arguments = zortunedex::arguments(argc, argv);
  const zortunedex::library library;
  const zortunedex::database db = library.open(arguments.size() > 1 ? arguments[1] : "samples/home",
                                               49, zortunedex::signal::dvb_satellite);
  const auto count = std::ranges::count(db.channels(), zortunedex::service::digital_tv,
                                        &zortunedex::channel::service);
  std::printf("%d television channels\n", static_cast<int>(count));
} catch (const std::exception& raised) {  // what cannot be done, where and why
  std::fprintf(stderr, "%s\n", raised.what());
  return 1;
}

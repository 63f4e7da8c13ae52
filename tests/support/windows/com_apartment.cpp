// Every test program runs in COM's multithreaded apartment, from before its first test.
#include <cstdlib>

#include "platform/com.h"

namespace {

class Apartment {
 public:
  Apartment() {
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) std::abort();
  }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

const Apartment kApartment;

}  // namespace

// Country names from any registry file, for the codes of the table and for any others, into buffers
// of exactly the promised size.
#include <cstring>
#include <memory>

#include "countries/country_code.h"
#include "platform/com.h"
#include "support/fuzz.h"
#include "support/scratch.h"

void Fuzz(const BYTE* data, std::size_t size) {
  const Scratch& scratch = Scratch::Emptied();
  scratch.Write("machine.reg", {reinterpret_cast<const char*>(data), size});
  Require(ZorTunedexSetRegistryFile(scratch.File("machine.reg").c_str()) == S_OK);
  const auto buffer = std::make_unique<char[]>(kCountryNameSize);
  const CCountryCode countries;
  for (const std::uint32_t code : {1U, 2U, 31U, 49U, 389U, 4294967295U}) {
    std::memset(buffer.get(), 'x', kCountryNameSize);
    const HRESULT hr = GetRegistryCountryName(code, buffer.get());
    Require(hr == S_OK || hr == E_FAIL);
    if (hr == E_FAIL) Require(buffer[0] == 'x');
    std::memset(buffer.get(), 0, kCountryNameSize);
    const bool isKnown = countries.GetIndexByCode(code) >= 0;
    Require((countries.GetNameByCode(code, buffer.get()) != nullptr) == isKnown);
    Require(std::memchr(buffer.get(), 0, kCountryNameSize) != nullptr);
  }
}

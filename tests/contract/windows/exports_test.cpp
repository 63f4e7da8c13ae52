// What ZorTunedex.dll exports: its entry points, by name, and nothing else.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "contract/database.h"
#include "platform/host.h"
#include "support/expect.h"

namespace {

template <typename T>
T Fetch(const BYTE* place) {
  T value;
  std::memcpy(&value, place, sizeof(value));
  return value;
}

// The names in the export table of a module that is loaded.
std::set<std::string> ListExports(HMODULE module) {
  const auto* base = reinterpret_cast<const BYTE*>(module);
  const auto dos = Fetch<IMAGE_DOS_HEADER>(base);
  const auto headers = Fetch<IMAGE_NT_HEADERS64>(base + dos.e_lfanew);
  const IMAGE_DATA_DIRECTORY& entry =
      headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto exports = Fetch<IMAGE_EXPORT_DIRECTORY>(base + entry.VirtualAddress);
  // None by number alone.
  EXPECT_EQ(exports.NumberOfNames, exports.NumberOfFunctions);
  std::set<std::string> names;
  for (DWORD i = 0; i < exports.NumberOfNames; ++i) {
    const DWORD name = Fetch<DWORD>(base + exports.AddressOfNames + i * sizeof(DWORD));
    names.insert(reinterpret_cast<const char*>(base + name));
  }
  return names;
}

}  // namespace

TEST(Exports, AreExactlyTheEntryPoints) {
  GetFactory();
  const HMODULE module = GetModuleHandleW(L"ZorTunedex.dll");
  ASSERT_NE(nullptr, module);
  const std::set<std::string> expected = {"DllCanUnloadNow", "DllGetClassObject", "DllInstall",
                                          "DllRegisterServer", "DllUnregisterServer"};
  EXPECT_EQ(expected, ListExports(module));
}

// Windows has a code page and a registry of its own.
TEST(Exports, ThePortsOwnAreNotThere) {
  ExpectHr(E_NOTIMPL, host::SetCodePage(65001));
  ExpectHr(E_NOTIMPL, host::SetRegistryFile("file.reg"));
}

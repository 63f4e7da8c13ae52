// What libZorTunedex.so exports: these names, and nothing of its inside.
//
// Linux only: what the shared object exports; contract/windows/exports_test.cpp is its twin
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <set>
#include <string>

#include "platform/com.h"

namespace {

const std::set<std::string> kExports = {
    "CoTaskMemAlloc",
    "CoTaskMemFree",
    "DllCanUnloadNow",
    "DllGetClassObject",
    "DllInstall",
    "DllRegisterServer",
    "DllUnregisterServer",
    "SysAllocString",
    "SysAllocStringByteLen",
    "SysAllocStringLen",
    "SysFreeString",
    "SysStringByteLen",
    "SysStringLen",
    "ZorTunedexSetCodePage",
    "ZorTunedexSetRegistryFile",
};

// File of the library that this program is linked with.
std::string LibraryPath() {
  Dl_info info = {};
  EXPECT_NE(0, dladdr(reinterpret_cast<void*>(&DllGetClassObject), &info));
  return info.dli_fname;
}

// The names that `nm` lists for the library. An empty set when it cannot be run.
std::set<std::string> ListExports() {
  const std::string command = "nm -D --defined-only '" + LibraryPath() + "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> list(popen(command.c_str(), "r"), pclose);
  std::set<std::string> names;
  char line[4096];
  while (list && std::fgets(line, sizeof(line), list.get()) != nullptr) {
    std::string name(line);
    name.erase(name.find_last_not_of('\n') + 1);
    names.insert(name.substr(name.rfind(' ') + 1));
  }
  return names;
}

}  // namespace

TEST(Exports, AreTheLibrarysOwn) {
  EXPECT_NE(std::string::npos, LibraryPath().find("libZorTunedex.so")) << LibraryPath();
}

TEST(Exports, AreExactlyThese) { EXPECT_EQ(kExports, ListExports()); }

TEST(Exports, AreFoundByName) {
  void* library = dlopen(LibraryPath().c_str(), RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(nullptr, library);
  for (const std::string& name : kExports) {
    EXPECT_NE(nullptr, dlsym(library, name.c_str())) << name;
  }
  for (const char* name :
       {"_ZN8CTunedexC1EP8IUnknown", "_ZN8CTunedex5CloseEv", "_ZTV8CTunedex", "_ZTI8CTunedex",
        "_ZN4text6ToUtf8ESt17basic_string_viewIDsSt11char_"
        "traitsIDsEE"}) {
    EXPECT_EQ(nullptr, dlsym(library, name)) << name;
  }
  dlclose(library);
}

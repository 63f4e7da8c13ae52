#include "platform/library.h"

#include <dlfcn.h>

#include <cstdlib>
#include <memory>

#include "registry_script.h"

namespace library {

std::string Path() {
  Dl_info info = {};
  if (dladdr(reinterpret_cast<void*>(&Path), &info) == 0) return {};
  const std::unique_ptr<char, decltype(&std::free)> path(realpath(info.dli_fname, nullptr),
                                                         std::free);
  return path ? path.get() : std::string();
}

std::string RegistryScript() { return kRegistryScript; }

HRESULT RegisterTypeLibrary(bool) { return S_OK; }

HRESULT UnregisterTypeLibrary(bool) { return S_OK; }

}  // namespace library

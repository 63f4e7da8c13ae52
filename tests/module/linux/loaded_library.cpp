#include "module/loaded_library.h"

#include <dlfcn.h>

#include <filesystem>

const bool LoadedLibrary::kHasTypeLibrary = false;

LoadedLibrary::LoadedLibrary(const std::string& path)
    : m_module(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {}

LoadedLibrary::LoadedLibrary(const std::string& path, const RegistrySandbox& sandbox)
    : LoadedLibrary(path) {
  using Function = HRESULT (*)(const char*);
  const auto setFile = reinterpret_cast<Function>(Find("ZorTunedexSetRegistryFile"));
  if (setFile != nullptr) setFile(sandbox.FileName().c_str());
}

// Stays loaded: what it keeps for the life of the process would count as leaked.
LoadedLibrary::~LoadedLibrary() = default;

void* LoadedLibrary::Find(const char* name) const {
  return m_module ? dlsym(m_module, name) : nullptr;
}

bool LoadedLibrary::Copy(const std::string& path) {
  std::error_code error;
  const std::filesystem::path place(path);
  std::filesystem::create_directories(place.parent_path(), error);
  return std::filesystem::copy_file(ZORTUNEDEX_LIBRARY, place, error);
}

std::string LoadedLibrary::Registered(const std::string& path) { return path; }

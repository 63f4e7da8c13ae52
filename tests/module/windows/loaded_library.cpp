#include "module/loaded_library.h"

#include "platform/text.h"
#include "platform/windows/files/wide_path.h"

namespace {

std::wstring WidePath(const std::string& path) { return std::wstring(text::FromUtf8(path).View()); }

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(32768, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), 32768, full.data(), nullptr));
  return full;
}

}  // namespace

const bool LoadedLibrary::kHasTypeLibrary = true;

LoadedLibrary::LoadedLibrary(const std::string& path, const RegistrySandbox&)
    : LoadedLibrary(path) {}

LoadedLibrary::LoadedLibrary(const std::string& path)
    : m_module(LoadLibraryW(wide_path::Lengthen(FullPath(WidePath(path))).c_str())) {}

LoadedLibrary::~LoadedLibrary() {
  if (m_module != nullptr) FreeLibrary(static_cast<HMODULE>(m_module));
}

void* LoadedLibrary::Find(const char* name) const {
  return m_module ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(m_module), name))
                  : nullptr;
}

bool LoadedLibrary::Copy(const std::string& path) {
  const std::wstring full = FullPath(WidePath(path));
  for (std::size_t end = full.find(L'\\', 3); end != std::wstring::npos;
       end = full.find(L'\\', end + 1)) {
    CreateDirectoryW((L"\\\\?\\" + full.substr(0, end)).c_str(), nullptr);
  }
  return CopyFileW(FullPath(WidePath(ZORTUNEDEX_LIBRARY)).c_str(), (L"\\\\?\\" + full).c_str(),
                   TRUE) != 0;
}

std::string LoadedLibrary::Registered(const std::string& path) {
  return text::ToUtf8(FullPath(WidePath(path)));
}

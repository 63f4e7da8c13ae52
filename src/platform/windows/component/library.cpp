#include "platform/library.h"

#include <algorithm>

#include "platform/bstr.h"
#include "platform/com_ptr.h"
#include "platform/text.h"
#include "platform/windows/component/module_handle.h"
#include "platform/windows/component/type_registration.h"
#include "platform/windows/module_path.h"

namespace library {
namespace {

constexpr std::size_t kLongestHelpDirectory = 260;
constexpr WORD kScriptResource = 102;

std::wstring WidePath() { return ModulePath(OwnModule()); }

/// Cut behind the last separator.
std::wstring HelpDirectory(const std::wstring& path) {
  const std::size_t end = path.find_last_of(L"\\/:");
  const std::size_t length = end == std::wstring::npos ? 0 : end + 1;
  return path.substr(0, std::min(length, kLongestHelpDirectory));
}

HRESULT LoadOwnTypeLibrary(const std::wstring& path, ComPtr<ITypeLib>& types) {
  return LoadTypeLibEx(path.c_str(), REGKIND_NONE, types.Receive());
}

}  // namespace

std::string Path() { return text::ToUtf8(WidePath()); }

std::string RegistryScript() {
  const HRSRC place = FindResourceW(OwnModule(), MAKEINTRESOURCEW(kScriptResource), L"REGISTRY");
  if (place == nullptr) return {};
  const HGLOBAL resource = LoadResource(OwnModule(), place);
  const void* const bytes = resource ? LockResource(resource) : nullptr;
  if (bytes == nullptr) return {};
  return {static_cast<const char*>(bytes), SizeofResource(OwnModule(), place)};
}

HRESULT RegisterTypeLibrary(bool forUser) {
  const std::wstring path = WidePath();
  ComPtr<ITypeLib> types;
  const HRESULT hr = LoadOwnTypeLibrary(path, types);
  if (FAILED(hr)) return hr;
  return type_registration::Register(types.Get(), path, HelpDirectory(path), forUser);
}

HRESULT UnregisterTypeLibrary(bool forUser) {
  ComPtr<ITypeLib> types;
  const HRESULT hr = LoadOwnTypeLibrary(WidePath(), types);
  return FAILED(hr) ? hr : type_registration::Unregister(types.Get(), forUser);
}

}  // namespace library

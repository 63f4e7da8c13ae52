#include "platform/library.h"

#include <algorithm>

#include "platform/bstr.h"
#include "platform/com_ptr.h"
#include "platform/text.h"
#include "platform/windows/module_handle.h"
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

/// A function of OLE Automation that older systems lack. Null when this one does.
template <typename Function>
Function* FindAutomation(const char* name) {
  const HMODULE automation = GetModuleHandleW(L"OLEAUT32.DLL");
  if (automation == nullptr) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(automation, name)));
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
  std::wstring path = WidePath();
  ComPtr<ITypeLib> types;
  const HRESULT hr = LoadOwnTypeLibrary(path, types);
  if (FAILED(hr)) return hr;
  std::wstring directory = HelpDirectory(path);
  using Function = decltype(RegisterTypeLib);
  Function* const perUser = forUser ? FindAutomation<Function>("RegisterTypeLibForUser") : nullptr;
  Function* const registration = perUser ? perUser : RegisterTypeLib;
  return registration(types.Get(), path.data(), directory.data());
}

HRESULT UnregisterTypeLibrary(bool forUser) {
  ComPtr<ITypeLib> types;
  HRESULT hr = LoadOwnTypeLibrary(WidePath(), types);
  if (FAILED(hr)) return hr;
  TLIBATTR* found = nullptr;
  hr = types->GetLibAttr(&found);
  if (FAILED(hr)) return hr;
  const TLIBATTR attributes = *found;
  types->ReleaseTLibAttr(found);
  using Function = decltype(UnRegisterTypeLib);
  Function* const perUser =
      forUser ? FindAutomation<Function>("UnRegisterTypeLibForUser") : nullptr;
  Function* const unregistration = perUser ? perUser : UnRegisterTypeLib;
  return unregistration(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum,
                        attributes.lcid, attributes.syskind);
}

}  // namespace library

#include "platform/windows/component/type_registration.h"

namespace type_registration {
namespace {

/// The function for one user where it is asked for and there, else the one for all.
template <typename Function>
Function* Choose(Function* forAll, bool forUser, const char* name, Finder find) {
  void* const found = forUser ? find(name) : nullptr;
  return found ? reinterpret_cast<Function*>(found) : forAll;
}

}  // namespace

void* FindAutomation(const char* name) {
  const HMODULE automation = GetModuleHandleW(L"OLEAUT32.DLL");
  if (automation == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(automation, name));
}

HRESULT Register(ITypeLib* types, std::wstring path, std::wstring helpDirectory, bool forUser,
                 Finder find) {
  const auto registration = Choose(RegisterTypeLib, forUser, "RegisterTypeLibForUser", find);
  return registration(types, path.data(), helpDirectory.data());
}

HRESULT Unregister(ITypeLib* types, bool forUser, Finder find) {
  TLIBATTR* found = nullptr;
  const HRESULT hr = types->GetLibAttr(&found);
  if (FAILED(hr)) return hr;
  const TLIBATTR attributes = *found;
  types->ReleaseTLibAttr(found);
  const auto unregistration = Choose(UnRegisterTypeLib, forUser, "UnRegisterTypeLibForUser", find);
  return unregistration(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum,
                        attributes.lcid, attributes.syskind);
}

}  // namespace type_registration

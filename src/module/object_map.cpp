#include "module/object_map.h"

#include "database/tunedex.h"
#include "platform/library.h"
#include "platform/text.h"

namespace {

/// False for a path that UTF-8 cannot say: a registered name would lead elsewhere.
bool IsUtf8(const std::string& path) { return text::ToUtf8(text::FromUtf8(path).View()) == path; }

HRESULT UpdateRegistry(RegistrationScope scope, bool isRegistration) {
  const std::string path = library::Path();
  if (path.empty() || !IsUtf8(path)) return E_FAIL;
  RegistryScript script;
  const HRESULT hr = script.Parse(library::RegistryScript(), {{"MODULE", path}});
  if (FAILED(hr)) return hr;
  const Registrar registrar(scope);
  return isRegistration ? registrar.Register(script) : registrar.Unregister(script);
}

}  // namespace

const ObjectEntry kObjectMap[1] = {
    {CLSID_ZorTunedex, UpdateRegistry, CTunedex::CreateInstance},
};

#include "module/object_map.h"

#include "database/tunedex.h"
#include "platform/library.h"
#include "platform/text.h"

namespace {

/// False for a path that UTF-8 cannot say: a registered name would lead elsewhere.
bool IsUtf8(const std::string& path) { return text::ToUtf8(text::FromUtf8(path).View()) == path; }

/// What the registry says of the class, for the library where it stands now.
HRESULT ReadScript(RegistryScript& script) {
  const std::string path = library::Path();
  if (path.empty() || !IsUtf8(path)) return E_FAIL;
  return script.Parse(library::RegistryScript(), {{"MODULE", path}});
}

HRESULT WriteEntries(RegistrationScope scope) {
  RegistryScript script;
  const HRESULT hr = ReadScript(script);
  return FAILED(hr) ? hr : Registrar(scope).Register(script);
}

HRESULT RemoveEntries(RegistrationScope scope) {
  RegistryScript script;
  const HRESULT hr = ReadScript(script);
  return FAILED(hr) ? hr : Registrar(scope).Unregister(script);
}

}  // namespace

const ObjectEntry kObjectMap[1] = {
    {CLSID_ZorTunedex, WriteEntries, RemoveEntries, CTunedex::CreateInstance},
};

// Registry scripts: any text is read or refused as a whole; what is read is registered twice and
// unregistered twice, for all users or for one, beside keys of other programs.
#include "support/fuzz.h"
#include "support/script_model.h"

void Fuzz(const BYTE* data, std::size_t size) {
  RegistryScript script;
  const HRESULT hr =
      script.Parse({reinterpret_cast<const char*>(data), size}, {{"MODULE", "/it's here"}});
  Require(hr == (script.blocks.empty() ? E_INVALIDARG : S_OK));
  const auto scope = size % 2 == 0 ? RegistrationScope::Machine : RegistrationScope::User;
  const ScriptModel model(script, scope);
  // Every step reads and writes the whole file.
  if (model.Steps() > 60) return;
  const ScriptedRegistry registry(Scratch::Emptied(), model);
  const Registrar registrar(scope);
  const RegistryKeys before = registry.Read();
  Require(registrar.Register(script) == S_OK);
  const RegistryKeys registered = registry.Read();
  model.RequireRegistered(before, registered);
  Require(registrar.Register(script) == S_OK && registry.Read() == registered);
  for (int round = 0; round < 2; ++round) {
    Require(SUCCEEDED(registrar.Unregister(script)));
    model.RequireUnregistered(before, registry.Read());
  }
}

#include "module/registrar.h"

namespace {

using Key = RegistryScript::Key;

constexpr std::string_view kClassesOfUser = "Software\\Classes";

}  // namespace

/// A key of the registry.
struct Registrar::Place {
  registry::Root root;
  std::string path;

  Place Below(const std::string& name) const {
    return {root, path.empty() ? name : path + '\\' + name};
  }

  HRESULT Set(const std::string& name, const RegistryScript::Data& data) const {
    struct Setter {
      HRESULT operator()(const std::string& text) const {
        return registry::SetText(place.root, place.path, name, text);
      }
      HRESULT operator()(std::uint32_t number) const {
        return registry::SetNumber(place.root, place.path, name, number);
      }
      HRESULT operator()(const RegistryScript::Texts& texts) const {
        return registry::SetTexts(place.root, place.path, name, texts);
      }
      HRESULT operator()(const RegistryScript::Bytes& bytes) const {
        return registry::SetBytes(place.root, place.path, name, bytes.bytes);
      }
      const Place& place;
      const std::string& name;
    };
    return std::visit(Setter{*this, name}, data);
  }

  HRESULT Write(const Key& key) const {
    if (key.action == Key::Action::ForceRemove || key.action == Key::Action::Delete) {
      const HRESULT hr = registry::DeleteTree(root, path);
      if (FAILED(hr) || key.action == Key::Action::Delete) return hr;
    }
    HRESULT hr = registry::CreateKey(root, path);
    if (SUCCEEDED(hr) && key.data) hr = Set({}, *key.data);
    for (std::size_t i = 0; SUCCEEDED(hr) && i < key.values.size(); ++i) {
      hr = Set(key.values[i].name, key.values[i].data);
    }
    return FAILED(hr) ? hr : WriteKeys(key);
  }

  HRESULT WriteKeys(const Key& key) const {
    HRESULT hr = S_OK;
    for (std::size_t i = 0; SUCCEEDED(hr) && i < key.keys.size(); ++i) {
      hr = Below(key.keys[i].name).Write(key.keys[i]);
    }
    return hr;
  }

  HRESULT Remove(const Key& key) const {
    if (key.action == Key::Action::Delete) return S_OK;
    if (key.action == Key::Action::ForceRemove) return registry::DeleteTree(root, path);
    const HRESULT below = RemoveKeys(key);
    if (FAILED(below)) return below;
    if (key.action == Key::Action::NoRemove) {
      const HRESULT hr = RemoveValues(key);
      return FAILED(hr) ? hr : below;
    }
    HRESULT hr = registry::DeleteKey(root, path);
    if (hr != S_FALSE) return hr;
    if (key.data) hr = registry::DeleteValue(root, path, {});
    if (SUCCEEDED(hr)) hr = RemoveValues(key);
    return FAILED(hr) ? hr : S_FALSE;
  }

  HRESULT RemoveKeys(const Key& key) const {
    bool isForeignLeft = false;
    for (const Key& child : key.keys) {
      const HRESULT hr = Below(child.name).Remove(child);
      if (FAILED(hr)) return hr;
      isForeignLeft = isForeignLeft || hr == S_FALSE;
    }
    return isForeignLeft ? S_FALSE : S_OK;
  }

  HRESULT RemoveValues(const Key& key) const {
    HRESULT hr = S_OK;
    for (std::size_t i = 0; SUCCEEDED(hr) && i < key.values.size(); ++i) {
      hr = registry::DeleteValue(root, path, key.values[i].name);
    }
    return hr;
  }
};

Registrar::Place Registrar::PlaceOf(const RegistryScript::Block& block) const {
  const bool isRedirected =
      m_scope == RegistrationScope::User && block.root == registry::Root::ClassesRoot;
  if (isRedirected) return {registry::Root::CurrentUser, std::string(kClassesOfUser)};
  return {block.root, {}};
}

HRESULT Registrar::Register(const RegistryScript& script) const {
  HRESULT hr = S_OK;
  for (std::size_t i = 0; SUCCEEDED(hr) && i < script.blocks.size(); ++i) {
    hr = PlaceOf(script.blocks[i]).WriteKeys(script.blocks[i].top);
  }
  return hr;
}

HRESULT Registrar::Unregister(const RegistryScript& script) const {
  bool isForeignLeft = false;
  for (const RegistryScript::Block& block : script.blocks) {
    const HRESULT hr = PlaceOf(block).RemoveKeys(block.top);
    if (FAILED(hr)) return hr;
    isForeignLeft = isForeignLeft || hr == S_FALSE;
  }
  return isForeignLeft ? S_FALSE : S_OK;
}

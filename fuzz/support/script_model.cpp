#include "support/script_model.h"

#include <algorithm>

#include "platform/linux/registry/reg_file.h"
#include "platform/linux/registry/reg_text.h"
#include "platform/text.h"
#include "support/fuzz.h"

namespace {

using Action = RegistryScript::Key::Action;
using registry::Root;

constexpr char kFile[] = "machine.reg";
constexpr char16_t kForeign[] = u"of another program";

std::u16string NameOf(Root root) {
  switch (root) {
    case Root::LocalMachine:
      return u"HKEY_LOCAL_MACHINE";
    case Root::CurrentUser:
      return u"HKEY_CURRENT_USER";
    default:
      return u"HKEY_CLASSES_ROOT";
  }
}

/// The path and all above it, roots left out.
template <typename Visit>
void ForEachAbove(std::u16string path, Visit visit) {
  for (std::size_t end; (end = path.rfind(u'\\')) != path.npos; path.resize(end)) visit(path);
}

bool IsDefault(const std::u16string& line) { return line.starts_with(u'@'); }

}  // namespace

ScriptedRegistry::ScriptedRegistry(const Scratch& scratch, const ScriptModel& model)
    : m_scratch(scratch) {
  Require(ZorTunedexSetRegistryFile(scratch.File(kFile).c_str()) == S_OK);
  RegFile file;
  for (const std::u16string& path : model.ForeignPaths()) {
    file.SetText(path, u"", kForeign);
    file.SetNumber(path, u"a", 1);
  }
  scratch.Write(kFile, file.Format());
}

ScriptedRegistry::~ScriptedRegistry() { ZorTunedexSetRegistryFile(nullptr); }

// The file is one that the library wrote: one line for a key or a value, no comments.
RegistryKeys ScriptedRegistry::Read() const {
  const std::u16string text = reg_text::FromBytes(m_scratch.Read(kFile));
  RegistryKeys keys;
  std::set<std::u16string>* values = nullptr;
  for (std::size_t begin = 0, end; (end = text.find(u"\r\n", begin)) != text.npos;
       begin = end + 2) {
    const std::u16string line = text.substr(begin, end - begin);
    if (line.starts_with(u'[')) {
      const std::u16string path = reg_text::Fold(line.substr(1, line.size() - 2));
      ForEachAbove(path, [&](const std::u16string& above) { keys[above]; });
      values = &keys[path];
    } else if (values != nullptr && !line.empty()) {
      values->insert(line);
    }
  }
  // A root is no key that somebody made.
  std::erase_if(keys, [](const auto& key) { return key.first.find(u'\\') == key.first.npos; });
  return keys;
}

ScriptModel::ScriptModel(const RegistryScript& script, RegistrationScope scope) {
  for (const RegistryScript::Block& block : script.blocks) {
    const bool isRedirected = scope == RegistrationScope::User && block.root == Root::ClassesRoot;
    AddBelow(block.top, isRedirected ? Place{Root::CurrentUser, "Software\\Classes", false}
                                     : Place{block.root, "", false});
  }
}

std::u16string ScriptModel::FullPath(const Place& place) {
  std::u16string path = NameOf(place.root) + u'\\';
  path.append(text::FromUtf8(place.path).View());
  return path;
}

std::vector<std::u16string> ScriptModel::ForeignPaths() const {
  std::vector<std::u16string> paths = {
      std::u16string(u"HKEY_CLASSES_ROOT\\CLSID\\") + kForeign,
      std::u16string(u"HKEY_CURRENT_USER\\Software\\Classes\\") + kForeign};
  for (std::size_t i = 0; i < m_places.size(); i += 3) {
    paths.push_back(FullPath(m_places[i]) + u'\\' + kForeign);
  }
  return paths;
}

void ScriptModel::AddBelow(const RegistryScript::Key& key, const Place& place) {
  for (const RegistryScript::Key& child : key.keys) {
    const std::string path = place.path.empty() ? child.name : place.path + '\\' + child.name;
    Add(child, {place.root, path, place.isTakenAway});
  }
}

void ScriptModel::Add(const RegistryScript::Key& key, const Place& place) {
  const std::u16string path = reg_text::Fold(FullPath(place));
  m_steps += 1 + key.values.size();
  m_places.push_back(place);
  m_namesTwice = !m_named.insert(path).second || m_namesTwice;
  if (key.action == Action::Delete) m_deleted.insert(path);
  const bool isTaken = key.action == Action::ForceRemove || key.action == Action::Delete;
  if (isTaken) m_taken.insert(path);
  if (key.action == Action::NoRemove && !place.isTakenAway) {
    ForEachAbove(path, [&](const std::u16string& above) { m_kept.insert(above); });
  }
  AddBelow(key, {place.root, place.path, place.isTakenAway || isTaken});
}

bool ScriptModel::MayGo(const std::u16string& path) const {
  bool mayGo = m_named.contains(path);
  ForEachAbove(path, [&](const std::u16string& above) { mayGo |= m_taken.contains(above); });
  return mayGo;
}

void ScriptModel::RequireForeignKept(const RegistryKeys& before, const RegistryKeys& after) const {
  for (const auto& [path, values] : before) {
    if (MayGo(path)) continue;
    const auto found = after.find(path);
    Require(found != after.end() && found->second == values);
  }
}

void ScriptModel::RequireRegistered(const RegistryKeys& before, const RegistryKeys& after) const {
  RequireForeignKept(before, after);
  if (m_named.empty()) Require(after == before);
  if (m_namesTwice) return;
  for (const std::u16string& path : m_named) {
    Require(after.contains(path) != m_deleted.contains(path));
  }
}

void ScriptModel::RequireUnregistered(const RegistryKeys& before, const RegistryKeys& after) const {
  RequireForeignKept(before, after);
  for (const auto& [path, values] : after) {
    if (before.contains(path)) continue;
    Require(m_kept.contains(path));
    if (!m_namesTwice) Require(std::all_of(values.begin(), values.end(), IsDefault));
  }
  if (m_namesTwice) return;
  for (const std::u16string& path : m_kept) Require(after.contains(path));
}

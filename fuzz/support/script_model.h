// Registry scripts run against a registry file, beside what can be told from the script alone.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "module/registrar.h"
#include "support/scratch.h"

/// The lines of the values of every key that is there, those above it too, by its folded full path.
using RegistryKeys = std::map<std::u16string, std::set<std::u16string>>;

class ScriptModel;

/// Makes a file of the directory the registry, with the keys of other programs in it.
class ScriptedRegistry {
 public:
  ScriptedRegistry(const Scratch& scratch, const ScriptModel& model);
  ScriptedRegistry(const ScriptedRegistry&) = delete;
  ScriptedRegistry& operator=(const ScriptedRegistry&) = delete;
  ~ScriptedRegistry();

  RegistryKeys Read() const;

 private:
  const Scratch& m_scratch;
};

/// What a script promises of the keys that it names.
class ScriptModel {
 public:
  ScriptModel(const RegistryScript& script, RegistrationScope scope);

  /// Keys of other programs: besides those of the script, and below each third one of them.
  std::vector<std::u16string> ForeignPaths() const;
  /// How many keys and values there are; each is a rewriting of the file.
  std::size_t Steps() const { return m_steps; }

  /// Ends the run when a key of the script is missing that nothing in it deletes, or one of another
  /// program changed that nothing in it deletes.
  void RequireRegistered(const RegistryKeys& before, const RegistryKeys& after) const;
  /// Ends the run when anything new is left but what the script says to leave, or a foreign key is
  /// missing.
  void RequireUnregistered(const RegistryKeys& before, const RegistryKeys& after) const;

 private:
  struct Place {
    registry::Root root;
    std::string path;
    bool isTakenAway;  ///< with a key above it
  };
  using Paths = std::set<std::u16string>;

  static std::u16string FullPath(const Place& place);
  void Add(const RegistryScript::Key& key, const Place& place);
  void AddBelow(const RegistryScript::Key& key, const Place& place);
  void RequireForeignKept(const RegistryKeys& before, const RegistryKeys& after) const;
  bool MayGo(const std::u16string& path) const;

  std::vector<Place> m_places;
  std::size_t m_steps = 0;
  Paths m_named;
  Paths m_deleted;            // on registering
  Paths m_taken;              // ForceRemove and Delete: they go with their trees
  Paths m_kept;               // NoRemove, and what is above them
  bool m_namesTwice = false;  // then the order of the entries decides
};

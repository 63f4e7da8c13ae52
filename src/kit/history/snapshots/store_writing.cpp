// What a store writes and removes.
#include <set>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/history/snapshots/crc32.h"
#include "kit/history/snapshots/store.h"
#include "platform/host.h"

namespace zortunedex::kit::history {

void Store::WriteIn(const std::string& name, const std::string& bytes) const {
  std::string cause;
  if (host::ReplaceFile(PathIn(name), bytes, cause)) return;
  // At a device error the file may be there although the system could not promise that it stays.
  if (ReadIn(name) == bytes) return;
  throw Failure{E_FAIL, std::string(kFolder) + "/" + name + " could not be written: " + cause};
}

void Store::RemoveIn(const std::string& name) const {
  std::string ignored;
  host::RemoveFile(PathIn(name), ignored);
}

StoredFile Store::WriteCopy(Number number, const std::string& name,
                            const std::string& bytes) const {
  const std::string in = DigitsOf(number) + "-" + name;
  // A process that was killed may have left one: no snapshot names it.
  WriteIn(in, bytes);
  return {in, bytes.size(), Crc32(bytes)};
}

const Snapshot& Store::Write(const Snapshot* parent, const FileSet& parentFiles,
                             const FileSet& files, const std::string& by) {
  Snapshot snapshot{NextNumber(), std::nullopt, TimeNow(), by, {}};
  if (parent != nullptr) snapshot.parent = parent->number;
  try {
    for (const auto& [name, bytes] : files) {
      std::optional<StoredFile>& stored = snapshot.files[name];
      if (!bytes) continue;
      const StoredFile* shared = parent == nullptr ? nullptr : parent->Find(name);
      const bool isSame = shared != nullptr && BytesOf(parentFiles, name) == bytes;
      stored = isSame ? *shared : WriteCopy(snapshot.number, name, *bytes);
    }
    const std::string name = FileNameOf(snapshot.number);
    WriteIn(name, ToJson(snapshot));
  } catch (const Failure&) {
    Remove(snapshot.number);
    for (const auto& [name, bytes] : files) RemoveIn(DigitsOf(snapshot.number) + "-" + name);
    throw;
  }
  m_last = snapshot.number;
  return m_snapshots[snapshot.number] = std::move(snapshot);
}

void Store::Begin(const Pending& pending) {
  WriteIn(kPending, ToJson(pending));
  m_pending = pending;
}

void Store::SetHead(Number number) {
  WriteIn(kHead, std::to_string(number) + "\n");
  m_head = number;
}

void Store::End() {
  // One that stays names the snapshot that HEAD names, and is removed by the next command.
  RemoveIn(kPending);
  m_pending.reset();
}

bool Store::Remove(Number number) {
  std::string ignored;
  if (!host::RemoveFile(PathIn(FileNameOf(number)), ignored)) return false;
  m_snapshots.erase(number);
  return true;
}

void Store::RemoveDamaged() {
  std::vector<Number> damaged = m_unreadable;
  for (const auto& [number, snapshot] : m_snapshots) {
    try {
      ReadUnexplained(snapshot);
    } catch (const Damage&) {
      damaged.push_back(number);
    }
  }
  for (const Number number : damaged) Remove(number);
  if (Head() == nullptr) RemoveIn(kHead);
  if (!m_pending) RemoveIn(kPending);
  *this = Store(m_directory);
}

void Store::RemoveUnnamed() {
  if (!m_unreadable.empty()) return;
  std::set<std::string> named;
  for (const auto& [number, snapshot] : m_snapshots) {
    for (const auto& [name, stored] : snapshot.files) {
      if (stored) named.insert(stored->in);
    }
  }
  for (const std::string& name : NamesIn(PathOf(m_directory, kFolder))) {
    const std::size_t dash = name.find('-');
    if (dash == std::string::npos || !NumberOf(name.substr(0, dash), "")) continue;
    const std::string original = name.substr(dash + 1);
    if (named.contains(name) || !(IsDataFile(original) || IsBase(original))) continue;
    RemoveIn(name);
  }
}

}  // namespace zortunedex::kit::history

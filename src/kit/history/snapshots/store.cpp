#include "kit/history/snapshots/store.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "kit/history/snapshots/crc32.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace history {
namespace {

std::string Shown(const std::string& name) { return std::string(kFolder) + "/" + name; }

std::string WithoutBlanks(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

/// "1-3, 5"
std::string RangesOf(const std::vector<Number>& numbers) {
  std::string text;
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t last = i;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
    text += (text.empty() ? "" : ", ") + std::to_string(numbers[i]);
    if (last > i) text += "-" + std::to_string(numbers[last]);
    i = last + 1;
  }
  return text;
}

}  // namespace

Store::Store(const std::string& directory) : m_directory(directory) {
  try {
    ReadSnapshots();
    ReadPending();
    ReadHead();
  } catch (const ForeignVersion& version) {
    throw Failure{E_FAIL, "the history is left alone: " + std::string(version.what()) +
                              " and not of this tunedex (--no-history goes on without it)"};
  }
  NoteMissing();
}

std::string Store::PathIn(const std::string& name) const {
  return PathOf(PathOf(m_directory, kFolder), name);
}

std::optional<std::string> Store::ReadIn(const std::string& name) const {
  return whole_file::Read(whole_file::PathOf(PathIn(name)));
}

void Store::ReadSnapshots() {
  for (const std::string& name : NamesIn(PathOf(m_directory, kFolder))) {
    const std::optional<Number> number = NumberOf(name, ".json");
    if (!number) continue;
    m_last = std::max(m_last, *number);
    try {
      const std::optional<std::string> json = ReadIn(name);
      if (!json) throw Damage{"cannot be read"};
      m_snapshots.emplace(*number, SnapshotOf(*number, *json));
    } catch (const Damage& damage) {
      m_unreadable.push_back(*number);
      m_damage.push_back(Shown(name) + " " + damage.what());
    } catch (const ForeignVersion& version) {
      throw ForeignVersion{Shown(name) + " " + version.what()};
    }
  }
}

void Store::ReadPending() {
  const std::optional<std::string> json = ReadIn(kPending);
  if (!json) return;
  try {
    m_pending = PendingOf(*json);
    m_last = std::max(m_last, m_snapshots.contains(m_pending->target) ? m_pending->target : 0);
  } catch (const Damage& damage) {
    m_damage.push_back(Shown(kPending) + " " + damage.what());
  } catch (const ForeignVersion& version) {
    throw ForeignVersion{Shown(kPending) + " " + version.what()};
  }
}

void Store::ReadHead() {
  const std::optional<std::string> text = ReadIn(kHead);
  if (!text) {
    // The first snapshot stands there before HEAD does.
    if (!m_pending && !(m_snapshots.empty() && m_unreadable.empty())) {
      m_damage.push_back(Shown(kHead) + " is missing");
    }
    return;
  }
  std::string digits = WithoutBlanks(*text);
  if (digits.size() < DigitsOf(0).size()) digits.insert(0, DigitsOf(0).size() - digits.size(), '0');
  m_head = NumberOf(digits, "");
  if (!m_head) {
    m_damage.push_back(Shown(kHead) + " names no snapshot");
  } else if (!m_snapshots.contains(*m_head)) {
    m_damage.push_back(Shown(kHead) + " names snapshot " + std::to_string(*m_head) +
                       ", which is not there");
  }
}

void Store::NoteMissing() {
  std::set<std::string> noted;
  for (const auto& [number, snapshot] : m_snapshots) {
    for (const auto& [name, stored] : snapshot.files) {
      if (!stored || noted.contains(stored->in)) continue;
      std::error_code error;
      const std::uintmax_t size = fs::file_size(whole_file::PathOf(PathIn(stored->in)), error);
      if (!error && size == stored->size) continue;
      noted.insert(stored->in);
      m_damage.push_back(Shown(stored->in) + (error ? " is missing" : " is not what was stored"));
    }
  }
}

const Snapshot* Store::Head() const {
  const auto found = m_head ? m_snapshots.find(*m_head) : m_snapshots.end();
  return found == m_snapshots.end() ? nullptr : &found->second;
}

void Store::RequireWhole() const {
  if (m_damage.empty()) return;
  const std::size_t others = m_damage.size() - 1;
  throw Failure{E_FAIL, "the history is damaged: " + m_damage.front() +
                            (others == 0 ? "" : " (and " + std::to_string(others) + " more)") +
                            "; " + Restorable()};
}

std::string Store::Restorable() const {
  std::vector<Number> whole;
  for (const auto& [number, snapshot] : m_snapshots) {
    try {
      ReadUnexplained(snapshot);
      whole.push_back(number);
    } catch (const Damage&) {  // not this one
    }
  }
  const std::string rest = m_damage.empty()
                               ? ""
                               : ". 'history prune' removes what is damaged, and --no-history does "
                                 "without the history";
  if (whole.empty()) return "no snapshot can be restored" + rest;
  return "'history restore' can bring back " + RangesOf(whole) + rest;
}

const Snapshot& Store::Find(Number number) const {
  const auto found = m_snapshots.find(number);
  if (found != m_snapshots.end()) return found->second;
  const bool isDamaged =
      std::find(m_unreadable.begin(), m_unreadable.end(), number) != m_unreadable.end();
  throw Failure{E_FAIL, (isDamaged ? "snapshot " + std::to_string(number) + " is damaged; "
                                   : "there is no snapshot " + std::to_string(number) + "; ") +
                            Restorable()};
}

const Snapshot* Store::ParentOf(const Snapshot& snapshot) const {
  const auto found = snapshot.parent ? m_snapshots.find(*snapshot.parent) : m_snapshots.end();
  return found == m_snapshots.end() ? nullptr : &found->second;
}

const Snapshot* Store::ChildOf(const Snapshot& snapshot) const {
  const Snapshot* newest = nullptr;
  for (const auto& [number, other] : m_snapshots) {
    if (other.parent == snapshot.number) newest = &other;
  }
  return newest;
}

std::vector<std::string> Store::Differing(const Snapshot& snapshot) const {
  const Snapshot* parent = ParentOf(snapshot);
  std::set<std::string> names;
  for (const auto& [name, stored] : snapshot.files) names.insert(name);
  if (parent != nullptr) {
    for (const auto& [name, stored] : parent->files) names.insert(name);
  }
  std::vector<std::string> differing;
  for (const std::string& name : names) {
    const StoredFile* before = parent == nullptr ? nullptr : parent->Find(name);
    const StoredFile* now = snapshot.Find(name);
    const bool isSame = before == nullptr || now == nullptr ? before == now : *before == *now;
    if (!isSame) differing.push_back(name);
  }
  return differing;
}

std::string Store::ReadCopy(const StoredFile& file) const {
  std::optional<std::string> bytes = ReadIn(file.in);
  if (!bytes) throw Damage{Shown(file.in) + " is missing"};
  if (bytes->size() != file.size || Crc32(*bytes) != file.crc32) {
    throw Damage{Shown(file.in) + " is not what was stored"};
  }
  return *std::move(bytes);
}

FileSet Store::ReadUnexplained(const Snapshot& snapshot) const {
  FileSet files;
  for (const auto& [name, stored] : snapshot.files) {
    files[name] = std::nullopt;
    if (stored) files[name] = ReadCopy(*stored);
  }
  return files;
}

void Store::Explain(const Snapshot& snapshot, const std::string& damage) const {
  throw Failure{E_FAIL, "snapshot " + std::to_string(snapshot.number) + " is damaged: " + damage +
                            "; " + Restorable()};
}

FileSet Store::Read(const Snapshot& snapshot) const {
  try {
    return ReadUnexplained(snapshot);
  } catch (const Damage& damage) {
    Explain(snapshot, damage.what());
  }
}

// Files are large: none is taken into memory only to be compared.
bool Store::CopyHolds(const StoredFile& file, std::string_view bytes) const {
  bool isSame = true;
  std::uintmax_t size = 0;
  std::uint32_t sum = 0;
  const bool isRead =
      whole_file::ReadParts(whole_file::PathOf(PathIn(file.in)), [&](std::string_view part) {
        size += part.size();
        sum = Crc32(part, sum);
        isSame = isSame && bytes.starts_with(part);
        if (isSame) bytes.remove_prefix(part.size());
        return true;
      });
  if (!isRead) throw Damage{Shown(file.in) + " is missing"};
  if (size != file.size || sum != file.crc32) {
    throw Damage{Shown(file.in) + " is not what was stored"};
  }
  return isSame && bytes.empty();
}

bool Store::HoldsUnexplained(const Snapshot& snapshot, const FileSet& files) const {
  bool isSame = std::all_of(files.begin(), files.end(), [&](const auto& file) {
    return !file.second || snapshot.Find(file.first) != nullptr;
  });
  for (const auto& [name, stored] : snapshot.files) {
    if (!stored) continue;
    const std::optional<std::string>& bytes = BytesOf(files, name);
    if (!CopyHolds(*stored, bytes ? *bytes : std::string_view()) || !bytes) isSame = false;
  }
  return isSame;
}

bool Store::Holds(const Snapshot& snapshot, const FileSet& files) const {
  try {
    return HoldsUnexplained(snapshot, files);
  } catch (const Damage& damage) {
    Explain(snapshot, damage.what());
  }
}

}  // namespace history

}  // namespace zortunedex::kit

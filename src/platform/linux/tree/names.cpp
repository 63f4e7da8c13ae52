#include "platform/linux/tree/names.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "platform/dom_path.h"
#include "platform/linux/tree/namespaces.h"

namespace domtree {
namespace {

template <typename Word>
std::uint64_t WordAt(const char* bytes) {
  Word word = 0;
  std::memcpy(&word, bytes, sizeof(word));
  return word;
}

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
  hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
  return hash ^ hash >> 32;
}

// Every attribute that is read or written asks for its name: whole words, the last two overlapping.
std::uint32_t HashOf(std::string_view name) {
  const char* const end = name.data() + name.size();
  std::uint64_t hash = name.size();
  if (name.size() >= 8) {
    for (const char* next = name.data(); end - next > 8; next += 8) {
      hash = Mix(hash, WordAt<std::uint64_t>(next));
    }
    hash = Mix(hash, WordAt<std::uint64_t>(end - 8));
  } else if (name.size() >= 4) {
    hash = Mix(hash, WordAt<std::uint32_t>(name.data()) << 32 | WordAt<std::uint32_t>(end - 4));
  } else {
    for (const char byte : name) hash = Mix(hash, static_cast<unsigned char>(byte));
  }
  return static_cast<std::uint32_t>(hash);
}

}  // namespace

NameId Names::Find(std::string_view name) const { return FindHashed(name, HashOf(name)); }

NameId Names::FindAnew(NameId previous, dom::Name name) {
  const NameId found = Find(name.text);
  if (found != kNoName) m_entries[previous].next = found;
  return found;
}

bool Names::IsSpelt(NameId id, dom::Name name) {
  Entry& entry = m_entries[id];
  if (std::strcmp(entry.text, name.text) != 0) return false;
  if (name.isLasting) entry.lasting = name.text;
  return true;
}

NameId Names::FindHashed(std::string_view name, std::uint32_t hash) const {
  if (m_slots.empty()) return kNoName;
  const std::size_t mask = m_slots.size() - 1;
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    const NameId id = m_slots[slot];
    if (id == kNoName) return kNoName;
    if (m_entries[id].hash == hash && Text(id) == name) return id;
  }
}

NameId Names::Intern(std::string_view name) {
  const std::uint32_t hash = HashOf(name);
  const NameId known = FindHashed(name, hash);
  return known != kNoName ? known : Add(name, hash);
}

NameId Names::InternPlain(std::string_view name) {
  const std::uint32_t hash = HashOf(name);
  const NameId known = FindHashed(name, hash);
  if (known != kNoName) return IsPlain(known) ? known : kNoName;
  return dom::IsPlainName(name) ? Add(name, hash) : kNoName;
}

NameId Names::InternPlain(dom::Name name) {
  for (const Recent& recent : m_recent) {
    if (recent.lasting == name.text) return recent.id;
  }
  const NameId id = InternPlain(std::string_view(name.text));
  if (name.isLasting && id != kNoName) {
    m_recent[m_nextRecent++ % m_recent.size()] = {name.text, id};
  }
  return id;
}

NameId Names::Add(std::string_view name, std::uint32_t hash) {
  const bool fits = name.size() < std::numeric_limits<std::uint32_t>::max();
  if (!fits || m_entries.size() == kNoName) throw std::bad_alloc();
  if (2 * (m_entries.size() + 1) > m_slots.size()) Grow();
  const std::size_t room = (name.size() / kTextStep + 1) * kTextStep;
  char* text = static_cast<char*>(m_pool.Allocate(room));
  std::memset(std::copy(name.begin(), name.end(), text), 0, room - name.size());
  const auto id = static_cast<NameId>(m_entries.size());
  const bool hasPrefix = name.find(':') != std::string_view::npos;
  m_entries.push_back({text, static_cast<std::uint32_t>(name.size()), hash, hasPrefix,
                       dom::IsPlainName(name), IsNamespaceDeclaration(name)});
  m_hasPrefixes = m_hasPrefixes || hasPrefix;
  const std::size_t mask = m_slots.size() - 1;
  std::size_t slot = hash & mask;
  while (m_slots[slot] != kNoName) slot = (slot + 1) & mask;
  m_slots[slot] = id;
  return id;
}

void Names::Grow() {
  std::vector<NameId> slots(std::max<std::size_t>(64, 2 * m_slots.size()), kNoName);
  const std::size_t mask = slots.size() - 1;
  for (NameId id = 0; id < m_entries.size(); ++id) {
    std::size_t slot = m_entries[id].hash & mask;
    while (slots[slot] != kNoName) slot = (slot + 1) & mask;
    slots[slot] = id;
  }
  m_slots.swap(slots);
}

}  // namespace domtree

#include "platform/linux/dom_names.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace domtree {
namespace {

std::uint32_t HashOf(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
  return hash;
}

bool IsLetter(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
}

bool IsNameByte(char byte) {
  return IsLetter(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
}

}  // namespace

bool IsPlainName(std::string_view name) {
  return !name.empty() && IsLetter(name.front()) &&
         std::all_of(name.begin(), name.end(), IsNameByte);
}

NameId Names::Find(std::string_view name) const { return FindHashed(name, HashOf(name)); }

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
  if (const NameId known = FindHashed(name, hash); known != kNoName) return known;
  const bool fits = name.size() < std::numeric_limits<std::uint32_t>::max();
  if (!fits || m_entries.size() == kNoName) throw std::bad_alloc();
  if (2 * (m_entries.size() + 1) > m_slots.size()) Grow();
  char* text = static_cast<char*>(m_pool.Allocate(name.size() + 1));
  std::memcpy(text, name.data(), name.size());
  text[name.size()] = '\0';
  const auto id = static_cast<NameId>(m_entries.size());
  const bool hasPrefix = name.find(':') != std::string_view::npos;
  m_entries.push_back(
      {text, static_cast<std::uint32_t>(name.size()), hash, hasPrefix, IsPlainName(name)});
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

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/dom_name.h"
#include "platform/linux/tree/pool.h"

namespace domtree {

using NameId = std::uint32_t;
/// Attributes keep names in 24 bits.
inline constexpr NameId kNoName = 0xFFFFFF;

/// The element and attribute names of one tree, each kept once. Names stay until the tree goes.
class Names {
 public:
  static constexpr std::size_t kTextStep = 16;

  explicit Names(Pool& pool) : m_pool(pool) {}
  Names(const Names&) = delete;
  Names& operator=(const Names&) = delete;

  /// kNoName when the tree has no such name.
  NameId Find(std::string_view name) const;
  /// The same for a name that is asked for behind another one, quickly where it was so before.
  NameId FindAfter(NameId previous, dom::Name name) {
    const NameId expected = m_entries[previous].next;
    return expected != kNoName && Is(expected, name) ? expected : FindAnew(previous, name);
  }
  /// Raises std::bad_alloc.
  NameId Intern(std::string_view name);
  /// As Intern for a plain name; kNoName, and nothing is kept, for any other.
  NameId InternPlain(std::string_view name);
  /// The same, quickly for one that lasts and was asked for lately, as those of the elements are
  /// that are made over and over.
  NameId InternPlain(dom::Name name);

  /// Whether that is the name. One that lasts is compared once.
  bool Is(NameId id, dom::Name name) {
    return m_entries[id].lasting == name.text || IsSpelt(id, name);
  }

  /// Zero bytes follow the text, one at least, up to a multiple of kTextStep.
  std::string_view Text(NameId id) const { return {m_entries[id].text, m_entries[id].length}; }
  bool HasPrefixes() const { return m_hasPrefixes; }
  bool HasPrefix(NameId id) const { return m_entries[id].hasPrefix; }
  bool IsPlain(NameId id) const { return m_entries[id].isPlain; }
  /// "xmlns" and "xmlns:...".
  bool IsDeclaration(NameId id) const { return m_entries[id].isDeclaration; }

  /// How many attributes elements of the name came to need room for; 0 for few.
  std::uint8_t UsualAttributes(NameId id) const { return m_entries[id].usualAttributes; }
  void NoteAttributes(NameId id, std::uint8_t count) {
    std::uint8_t& usual = m_entries[id].usualAttributes;
    if (usual < count) usual = count;
  }

 private:
  struct Entry {
    const char* text;
    std::uint32_t length;
    std::uint32_t hash;
    bool hasPrefix;
    bool isPlain;
    bool isDeclaration;
    std::uint8_t usualAttributes = 0;
    NameId next = kNoName;
    /// Where a name that lasts was found to be the same.
    const char* lasting = nullptr;
  };

  bool IsSpelt(NameId id, dom::Name name);
  NameId FindAnew(NameId previous, dom::Name name);
  NameId FindHashed(std::string_view name, std::uint32_t hash) const;
  NameId Add(std::string_view name, std::uint32_t hash);
  void Grow();

  struct Recent {
    const char* lasting = nullptr;
    NameId id = kNoName;
  };

  Pool& m_pool;
  std::vector<Entry> m_entries;
  /// Open addressing; a power of two in size, at most half full.
  std::vector<NameId> m_slots;
  bool m_hasPrefixes = false;
  std::array<Recent, 8> m_recent;
  std::size_t m_nextRecent = 0;
};

}  // namespace domtree

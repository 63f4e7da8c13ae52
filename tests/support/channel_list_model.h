// What a channel list does, on a plain vector: random operations are compared with it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/com.h"

namespace channel_list_model {

inline constexpr UINT kNone = 0xFFFFFFFF;

struct Entry {
  int id = 0;
  UINT index = 0;
  UINT number = 0;
  UINT favor = 0;
  std::int32_t serviceType = 0;  // as the mask sees it; 0: names none
  bool names = false;
};

class Model {
 public:
  std::vector<Entry*> entries;
  bool dirty = false;

  bool Add(Entry* entry) {
    if (entry->index == kNone) return false;
    std::size_t place = 0;
    while (place < entries.size() &&
           (entries[place]->index == kNone || entries[place]->index < entry->index)) {
      ++place;
    }
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(place), entry);
    dirty = true;
    return true;
  }
  void Remove(Entry* entry) {
    entries.erase(std::find(entries.begin(), entries.end(), entry));
    Renumber(true);
  }
  void Renumber(bool up) {
    UINT number = 0;
    const UINT count = static_cast<UINT>(entries.size());
    for (Entry* entry : entries) {
      ++number;
      entry->index = up ? number : count + 1 - number;
    }
    dirty = true;
  }
  Entry* ByIndex(UINT index) {
    for (Entry* entry : entries) {
      if (entry->index == index && index != kNone) return entry;
    }
    return nullptr;
  }
  Entry* ByNumber(UINT number) {
    for (Entry* entry : entries) {
      if (entry->number == number) return entry;
    }
    return nullptr;
  }
  UINT Count(DWORD mask) {
    UINT count = 0;
    std::int32_t current = -1;
    for (Entry* entry : entries) {
      if (entry->names) current = entry->serviceType;
      if ((static_cast<DWORD>(current) & mask) != 0) ++count;
    }
    return count;
  }
  HRESULT Move(UINT from, UINT to) {
    if (from == to) return E_INVALIDARG;
    Entry* entry = ByIndex(from);
    if (entry == nullptr) return E_FAIL;
    Remove(entry);
    entry->index = to;
    Add(entry);
    Renumber(true);
    return S_OK;
  }
  // Places in the order in which they are asked: this round, then the other one.
  HRESULT Find(bool next, UINT from, DWORD mask, bool available, bool looping, UINT* found) {
    const int n = static_cast<int>(entries.size());
    const int start = static_cast<int>(from);
    if (start > n || (!next && start == 0)) return E_INVALIDARG;
    if (n < 2) return E_FAIL;
    std::vector<int> places;
    if (next) {
      for (int i = start; i < n; ++i) places.push_back(i);
      for (int i = 0; looping && start != 0 && i < n; ++i) places.push_back(i);
    } else {
      for (int i = start - 2; i >= 0; --i) places.push_back(i);
      for (int i = n - 1; looping && i >= 0; --i) places.push_back(i);
    }
    std::int32_t current = -1;
    for (const int place : places) {
      const Entry* entry = entries[static_cast<std::size_t>(place)];
      if (entry->names) current = entry->serviceType;
      if ((static_cast<DWORD>(current) & mask) == 0) continue;
      if (available && entry->favor == 0) continue;
      *found = entry->index == kNone ? 0 : entry->index;
      return S_OK;
    }
    return E_FAIL;
  }
};

}  // namespace channel_list_model

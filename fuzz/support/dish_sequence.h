#pragma once

#include <array>
#include <vector>

#include "support/database.h"
#include "support/input.h"

/// The dish list of one database beside plain vectors that follow the same rules.
class DishSequence {
 public:
  explicit DishSequence(const Scratch& scratch);

  void Step(Input& input);
  /// Every dish's count and the index of each assignment.
  void RequireSame();

 private:
  struct Entry {
    ComPtr<IDishSatInfo> record;
    UINT index;
  };

  void Add(Input& input, UINT dish);
  void Remove(Input& input, UINT dish);
  void Lookup(Input& input, UINT dish);
  /// Saves and loads: every assignment has its own frequencies, so that all come back in order.
  void Reload();

  ComPtr<IZorTunedex> m_database;
  ComPtr<IDishSatInfoMgr> m_list;
  std::array<std::vector<Entry>, 4> m_dishes;
  DWORD m_nextFrequency = 0;
};

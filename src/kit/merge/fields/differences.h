#pragma once

#include "kit/merge/fields/field_table.h"

namespace zortunedex::kit::merge {

/// The channels that are one service; null where one of the four has it not.
struct Versions {
  const Channel* list = nullptr;
  const Channel* base = nullptr;
  const Channel* scan = nullptr;
  const Channel* result = nullptr;
};

/// What else is told than what the result has otherwise than the list.
struct Conflicts {
  bool ofName = false;
  bool ofTuning = false;
};

/// In the file's order. A list and a result are needed.
std::vector<FieldChange> DifferencesOf(const FieldTable& table, const Versions& versions,
                                       const Conflicts& conflicts,
                                       const std::function<std::string(std::string_view)>& utf8);

}  // namespace zortunedex::kit::merge

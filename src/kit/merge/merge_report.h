// A plan for people and for programs.
#pragma once

#include <string>

#include "kit/merge/merge.h"

namespace zortunedex::kit::merge {

/// What a plan is told as.
enum class PlanKind {
  Merge,  ///< what a merge does
  Diff,   ///< how two lists differ
};

/// A line for each channel that is not simply unchanged ("~ 5 ProSieben  M102 moved 12544750 V ->
/// 12663750 H"), what else changed indented below it; conflicts behind all others and in words; the
/// numbers of each code last. Terminal-safe UTF-8.
std::string PlanText(const MergePlan& plan, PlanKind kind);

/// {"tunedex":"merge","version":1,"summary":{"M100":51,...},"changes":[{"code","index","identity",
/// "name","fields":[{"field","list","base","scan","result"}]}]}: every channel in index order, what
/// the list has not last. "index" is the one in the list, of a new channel the one that it gets,
/// else null. Where they apply, "became" (another index than before; null: removed), "absent" and
/// "candidates" ({"identity","name"}) follow. Indented by two blanks, UTF-8, no line feed at the
/// end.
std::string PlanJson(const MergePlan& plan, PlanKind kind);

}  // namespace zortunedex::kit::merge

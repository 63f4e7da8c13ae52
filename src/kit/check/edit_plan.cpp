#include "kit/check/edit_plan.h"

#include <algorithm>
#include <iterator>

namespace zortunedex::kit::check {

bool EditPlan::Fits(markup::Span span) const {
  const auto next = m_replaced.upper_bound(span.begin);
  if (next != m_replaced.begin()) {
    const auto& [begin, end] = *std::prev(next);
    const bool isBehind = span.begin >= end || (span.IsEmpty() && span.begin == begin);
    if (!isBehind) return false;
  }
  if (next != m_replaced.end() && next->first < span.end) return false;
  const auto inside = m_inserted.upper_bound(span.begin);
  return inside == m_inserted.end() || *inside >= span.end;
}

bool EditPlan::Add(const std::vector<markup::Edit>& edits) {
  const bool fits =
      std::ranges::all_of(edits, [this](const markup::Edit& edit) { return Fits(edit.span); });
  if (!fits) return false;
  for (const markup::Edit& edit : edits) {
    if (!m_edits.Add(edit)) continue;
    if (edit.span.IsEmpty()) {
      m_inserted.insert(edit.span.begin);
    } else {
      m_replaced.emplace(edit.span.begin, edit.span.end);
    }
  }
  return true;
}

}  // namespace zortunedex::kit::check

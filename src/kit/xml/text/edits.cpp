#include "kit/xml/text/edits.h"

#include <iterator>
#include <utility>

namespace zortunedex::kit::markup {

bool Edits::Fits(Span span) const {
  if (span.end < span.begin) return false;
  // What is replaced last in front of the span must end there.
  const auto behind = m_replacements.lower_bound(span.IsEmpty() ? span.begin : span.end);
  if (behind != m_replacements.begin() && std::prev(behind)->second.span.end > span.begin) {
    return false;
  }
  const auto insertion = m_insertions.upper_bound(span.begin);
  return insertion == m_insertions.end() || insertion->first >= span.end;
}

bool Edits::Add(Edit edit) {
  const Span span = edit.span;
  if (!Fits(span)) return false;
  if (span.IsEmpty()) {
    m_insertions.emplace(span.begin, std::move(edit.text));
  } else {
    m_replacements.emplace(span.begin, std::move(edit));
  }
  return true;
}

std::optional<std::string> Edits::Apply(std::string_view bytes) const {
  std::string changed;
  std::size_t taken = 0;
  const auto take = [&](Span span, std::string_view text) {
    if (span.end > bytes.size()) return false;
    changed += bytes.substr(taken, span.begin - taken);
    changed += text;
    taken = span.end;
    return true;
  };
  auto insertion = m_insertions.begin();
  const auto insertUpTo = [&](std::size_t end) {
    for (; insertion != m_insertions.end() && insertion->first <= end; ++insertion) {
      if (!take({insertion->first, insertion->first}, insertion->second)) return false;
    }
    return true;
  };
  for (const auto& [begin, edit] : m_replacements) {
    if (!insertUpTo(begin) || !take(edit.span, edit.text)) return std::nullopt;
  }
  if (!insertUpTo(kLargestFile)) return std::nullopt;
  changed += bytes.substr(taken);
  return changed;
}

}  // namespace zortunedex::kit::markup

#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

/// Puts `text` in the place of a span: an insertion where the span is empty, a removal where the
/// text is.
struct Edit {
  Span span;
  std::string text;

  bool operator==(const Edit&) const = default;
};

/// Changes to the bytes of one file, in any order, none of which touches what another one replaces.
class Edits {
 public:
  /// False, and nothing is added, when the span overlaps one that is replaced already. Insertions
  /// overlap only inside of such a span; several at one place stand in the order in which they
  /// came, in front of what is replaced behind them.
  bool Add(Edit edit);
  bool IsEmpty() const { return Count() == 0; }
  std::size_t Count() const { return m_replacements.size() + m_insertions.size(); }

  /// The changed bytes; nothing when an edit is outside of them.
  std::optional<std::string> Apply(std::string_view bytes) const;

 private:
  using Replacements = std::map<std::uint32_t, Edit>;
  using Insertions = std::multimap<std::uint32_t, std::string>;

  bool Fits(Span span) const;

  // By where they begin.
  Replacements m_replacements;
  Insertions m_insertions;
};

}  // namespace zortunedex::kit::markup

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/text/edits.h"

namespace zortunedex::kit::check {

/// The edits of one file that are made at once: those of a finding come in together or not at all.
class EditPlan {
 public:
  /// False, and nothing is added, when one of them touches what is replaced already. They must not
  /// touch each other.
  bool Add(const std::vector<markup::Edit>& edits);

  /// The changed bytes; nothing when an edit is outside of them.
  std::optional<std::string> Apply(std::string_view bytes) const { return m_edits.Apply(bytes); }

 private:
  bool Fits(markup::Span span) const;

  markup::Edits m_edits;
  std::map<std::uint32_t, std::uint32_t> m_replaced;  ///< end by begin
  std::set<std::uint32_t> m_inserted;
};

}  // namespace zortunedex::kit::check

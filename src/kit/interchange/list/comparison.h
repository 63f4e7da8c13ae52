// Two channels told apart value by value, each difference under the code that says what became of
// it.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// How a list is compared with what came of it.
struct ComparisonRules {
  const ListContext& context;
  Names names = Names::Shown;             ///< which of the names was carried
  std::span<const FieldCode> codes = {};  ///< fields with a code of their own
};

/// Adds a loss for everything in which `became` is not `was`. Values that are nothing in both (0,
/// an empty text, "NotSet") do not differ.
void AddDifferences(const Channel& was, const Channel& became, const ComparisonRules& rules,
                    Losses& losses);

}  // namespace zortunedex::kit::interchange

// Elements of the pre-formatted form, whose values stand in the file without escapes. Each element
// is a line of its own and has every attribute of its table in the table's order, so that a value
// with quotation marks and tags in it can still be told from what follows.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

struct RawAttribute {
  std::string_view name;
  bool isNumber = false;  ///< matches -?[0-9]{1,10}
};

/// The attributes of an element in the order in which they are written.
using RawTable = std::span<const RawAttribute>;

struct RawSplit {
  int solutions = 0;         ///< 0, 1, or 2 for more than one
  std::vector<Span> values;  ///< of the first solution, in the order of the table
};

/// Splits the text of one element, from its "<" up to and with the ">" that ends its line: a value
/// ends in front of the next attribute's name between quotation marks, the last one at the end.
/// Takes time in proportion to the text and the table.
RawSplit SplitRaw(std::string_view text, std::string_view element, RawTable table);

}  // namespace zortunedex::kit::markup

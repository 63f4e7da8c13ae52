// Reads tables as the CSV writer makes them and spreadsheets save them again.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// The first row names the columns, in any order; an empty cell leaves a value unset. A row with
/// another number of cells is left out (L501), and so is a column whose name the signal type has
/// not (L502). Failure for a file whose first row names no column.
ImportResult ReadCsv(const Input& input, const ImportRequest& request, Losses& losses);

/// Leaves the names of those columns alone that the other table has.
void LimitCsv(const Input& other, Output& output);

}  // namespace zortunedex::kit::interchange

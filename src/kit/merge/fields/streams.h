#pragma once

#include "kit/merge/fields/field_table.h"

namespace zortunedex::kit::merge {

/// Gives a channel the streams and components of the scan, both with whole blocks. A selected
/// stream stays the one of the same PID, else of the same type and language, else the first. True
/// when something changed.
bool CombineStreams(const FieldTable& table, const Channel& scan, Channel& channel);

}  // namespace zortunedex::kit::merge

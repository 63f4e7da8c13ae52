// What only the format of a scan makes of values is undone.
#pragma once

#include "kit/merge/fields/field_table.h"

namespace zortunedex::kit::merge {

/// A channel, and how it reads in the scan's format. Null: there is none.
struct Told {
  const Channel* channel = nullptr;
  const Channel* reads = nullptr;
};

/// The scan's channel with values in full that its format leaves out or rounds: one that reads as
/// the list's would is the list's, else one that reads as the base's would is the base's.
Channel PutBack(const FieldTable& table, const Channel& scan, const Told& list, const Told& base);

}  // namespace zortunedex::kit::merge

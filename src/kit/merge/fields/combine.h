// A channel of the list and the same service of the scan made one.
#pragma once

#include "kit/merge/fields/field_table.h"
#include "kit/merge/fields/values.h"

namespace zortunedex::kit::merge {

/// What a channel becomes, and what there is to say of it.
struct Combined {
  Channel channel;
  bool isTuningChanged = false;
  bool isRenamed = false;
  bool isOtherChanged = false;  ///< streams, identifiers, anything else
  bool isStatusChanged = false;
  bool isRenamedByBoth = false;
  bool isNameUnclear = false;
  bool isTuningEdited = false;
};

/// A service of the scan, as it is there and with what its format cannot hold.
struct Scanned {
  const Channel& raw;
  const Channel& full;
};

class Combiner {
 public:
  Combiner(const FieldTable& table, const MergePolicy& policy) : m_table(table), m_policy(policy) {}

  /// `base` is null where it is not known what the scan last had.
  Combined Combine(const Channel& list, const BaseEntry* base, const Channel& scan) const;

  /// A channel of a service that the list has not, without an index.
  Channel New(const Channel& scan) const;

  /// What the base keeps of a service: the scan's, and what that cannot know from before.
  Channel ForBase(const Scanned& scan, const BaseEntry* base, const Channel& result) const;

 private:
  struct Three;

  void CombineName(const Three& of, const station_blocks::Field& row, Combined& combined) const;
  void CombineDisplayName(const Three& of, Combined& combined) const;
  void CombineTuning(const Three& of, const FieldRule& rule, Combined& combined) const;
  bool SaysNothing(const Channel& scan, const FieldRule& rule) const;

  const FieldTable& m_table;
  const MergePolicy& m_policy;
};

}  // namespace zortunedex::kit::merge

// What becomes of the channels of the list, and of the services that only the scan has.
#pragma once

#include "kit/merge/matching/transponders.h"
#include "kit/merge/planning/comparison.h"

namespace zortunedex::kit::merge {

struct ListFate {
  enum class Kind {
    Matched,
    Ambiguous,
    Kept,  ///< the scan did not look for it
    Gone,
    Removed,
  };
  Kind kind = Kind::Kept;
  std::size_t scanPlace = kNone;
  std::uint32_t absent = 0;  ///< scans in a row that lacked it, with this one
};

struct ScanFate {
  enum class Kind {
    Matched,
    Candidate,  ///< of something ambiguous
    Twin,
    Deleted,
    New,
  };
  Kind kind = Kind::New;
  std::size_t node = kNone;  ///< of a twin: the one that counts
};

/// True where a scan looked for a service that it lacks.
class LookedFor {
 public:
  LookedFor(const Comparison& comparison, InputSignalType signal, Scope scope);
  bool operator()(const Service& service) const;

 private:
  Scope m_scope;
  bool m_isEverywhere;
  Transponders m_transponders;
};

/// Matches list and scan, and goes on without what is removed until nothing more is: by place.
std::vector<ListFate> FatesOfList(Comparison& comparison, const ChannelTable& list,
                                  const MergePolicy& policy, bool isSameScan);

struct ScanFates {
  std::vector<ScanFate> ofPlaces;
  std::vector<bool> isReplaced;  ///< entries of the base that stand for a service of the scan
};

/// Each service of the scan by its place, when it is known what the list was matched with.
ScanFates FatesOfScan(const Comparison& comparison, const MergeBase* base,
                      const std::vector<ListFate>& list, InputSignalType signal);

}  // namespace zortunedex::kit::merge

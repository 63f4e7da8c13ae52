#pragma once

#include <map>
#include <set>

#include "kit/merge/fields/combine.h"
#include "kit/merge/fields/differences.h"
#include "kit/merge/planning/fates.h"
#include "kit/merge/planning/placing.h"

namespace zortunedex::kit::merge {

/// Makes the plan of one merge; used once.
class Planner {
 public:
  /// All outlive the planner.
  Planner(const ChannelTable& list, const MergeBase* base, const ChannelTable& scan,
          const MergePolicy& policy);

  MergePlan Run();

 private:
  void PlanListed(std::size_t place);
  /// The service that a channel was matched with, and what the scan's format cannot hold of it.
  Channel InFull(std::size_t place) const;
  void PlanMatched(std::size_t place, Change& change);
  void PlanGone(std::size_t place, Change& change);
  void PlanAmbiguous(std::size_t place, Change& change);
  void PlanScanned(std::size_t place);
  void PlanTwin(std::size_t place);
  void PlaceChannels();
  void AddBase();
  void AddBaseOfListed();
  void AddBaseOfScanned();
  void AddOldBase();

  Code CodeOf(const Combined& combined, const Channel& list, bool isFoundAgain) const;
  Change NewChange(Code code, const Channel& shown, const Service& service) const;
  void ShowFields(const Versions& versions, const Conflicts& conflicts, Change& change) const;
  Service ReadAgain(const Channel& channel) const;
  bool IsToldTwin(std::size_t scanPlace) const;

  const ChannelTable& m_list;
  const MergeBase* m_base;
  const MergePolicy& m_policy;
  FieldTable m_table;
  Combiner m_combiner;
  Comparison m_comparison;
  std::uint64_t m_fingerprint;
  std::vector<ListFate> m_fates;
  ScanFates m_scanFates;
  std::set<Service> m_toldTwins;

  MergePlan m_plan;
  std::vector<Channel> m_becomes;  ///< by place of the list
  std::vector<Placed> m_fresh;
  std::vector<Change> m_freshChanges;             ///< by place in m_fresh
  std::vector<Change> m_otherChanges;             ///< of services that stay out
  std::vector<std::size_t> m_otherNodes;          ///< of those; kNone for twins
  std::map<std::size_t, std::size_t> m_changeOf;  ///< of a scanned node
  std::set<std::size_t> m_assigned;               ///< places of the scan that a change has
  std::vector<std::size_t> m_untold;              ///< twins that were told before
  std::vector<std::size_t> m_resultPlaces;        ///< by place of the list; kNone: removed
  std::map<std::size_t, UINT> m_freshIndexes;     ///< by place of the scan
};

}  // namespace zortunedex::kit::merge

// The three tables of a merge held against each other.
#pragma once

#include <map>
#include <utility>

#include "kit/merge/matching/matching.h"
#include "kit/merge/merge.h"

namespace zortunedex::kit::merge {

class Comparison {
 public:
  /// All outlive the comparison.
  Comparison(const ChannelTable& list, const MergeBase* base, const ChannelTable& scan,
             const MergePolicy& policy);

  /// Matches list and scan, without the places of the list that are left out.
  void Match(const std::vector<bool>& isLeftOut);

  /// What the base knows of the channel at a place of the list; null for nothing.
  const BaseEntry* EntryOf(std::size_t listPlace) const;
  /// The same, of an entry that a scan had.
  const BaseEntry* SeenEntryOf(std::size_t listPlace) const;

  /// Of the scan, whose places are counted in an order of its own: by content.
  std::size_t TablePlaceOf(std::size_t scanPlace) const { return m_order[scanPlace]; }
  const Channel& ScanAt(std::size_t scanPlace) const;

  const std::vector<Service>& OfList() const { return m_list; }
  const std::vector<Service>& OfScan() const { return m_scan; }
  const std::vector<Service>& OfBase() const { return m_base; }
  /// Services of the list as the last scan had them, where one did.
  const std::vector<Service>& OfListAsScanned() const { return m_asScanned; }

  /// The one of several members that a channel's values come from: the same one, else the one of
  /// its name, else the first.
  std::size_t MemberFor(std::size_t listPlace, std::size_t scanNode) const;

  const Nodes& ListNodes() const { return m_listNodes; }
  const Nodes& ScanNodes() const { return m_scanNodes; }
  const Matching& ListToScan() const { return m_matching; }

  /// True for an entry that is a channel's of the list.
  bool IsLinked(std::size_t entry) const { return m_isLinked[entry]; }

 private:
  void OrderScan();
  void LinkBase();
  void LinkUntouched();
  void LinkLikely();
  void LinkCopies();
  void FindSameAsLastTime();

  const ChannelTable& m_listTable;
  const MergeBase* m_baseTable;
  const ChannelTable& m_scanTable;
  Reading m_reading;
  std::vector<std::size_t> m_order;
  std::vector<Service> m_list;
  std::vector<Service> m_base;
  std::vector<Service> m_scan;
  std::vector<std::size_t> m_entryOf;
  std::vector<bool> m_isLinked;
  std::vector<Service> m_asScanned;
  std::vector<std::size_t> m_lastTime;  ///< node of the scan that has what the last scan had
  Nodes m_listNodes;
  Nodes m_scanNodes;
  std::map<std::pair<std::size_t, std::uint64_t>, std::size_t> m_memberLike;
  std::map<std::pair<std::size_t, std::uint32_t>, std::size_t> m_memberNamed;
  Matching m_matching;
};

}  // namespace zortunedex::kit::merge

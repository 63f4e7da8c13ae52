#include "kit/merge/planning/fates.h"

#include <algorithm>

#include "kit/merge/matching/twins.h"

namespace zortunedex::kit::merge {
namespace {

std::uint32_t AbsentBy(const BaseEntry* entry, bool isSameScan) {
  const std::uint32_t before = entry == nullptr ? 0 : entry->absent;
  if (isSameScan) return std::max<std::uint32_t>(before, 1);
  return before == UINT32_MAX ? before : before + 1;
}

ListFate FateOf(const Comparison& comparison, std::size_t place, const LookedFor& isLookedFor,
                bool isSameScan) {
  const std::size_t node = comparison.ListNodes().nodeOf[place];
  const Matching& matching = comparison.ListToScan();
  if (const std::size_t found = matching.rightOf[node]; found != kNone) {
    return {ListFate::Kind::Matched, comparison.MemberFor(place, found)};
  }
  if (matching.ambiguityOfLeft[node] != kNone) return {ListFate::Kind::Ambiguous};
  if (!isLookedFor(comparison.OfListAsScanned()[place])) return {};
  return {ListFate::Kind::Gone, kNone, AbsentBy(comparison.EntryOf(place), isSameScan)};
}

bool IsToGo(const Channel& channel, const ListFate& fate, const MergePolicy& policy) {
  if (policy.gone != Gone::Remove || fate.kind != ListFate::Kind::Gone) return false;
  if (fate.absent < policy.goneAfter) return false;
  return policy.goneFavorites || (channel.favorite == 0 && channel.lock == 0);
}

}  // namespace

LookedFor::LookedFor(const Comparison& comparison, InputSignalType signal, Scope scope)
    : m_scope(scope),
      m_isEverywhere(!RecognitionOf(signal).hasTransponders),
      m_transponders(signal) {
  if (scope != Scope::Transponders || m_isEverywhere) return;
  for (std::size_t i = 0; i < comparison.OfScan().size(); ++i) {
    m_transponders.Add(comparison.OfScan()[i], i);
  }
}

bool LookedFor::operator()(const Service& service) const {
  if (m_scope != Scope::Transponders) return m_scope == Scope::Full;
  return m_isEverywhere || m_transponders.Has(service);
}

std::vector<ListFate> FatesOfList(Comparison& comparison, const ChannelTable& list,
                                  const MergePolicy& policy, bool isSameScan) {
  const LookedFor isLookedFor(comparison, list.signal, policy.scope);
  std::vector<ListFate> fates(list.channels.size());
  std::vector<bool> isRemoved(list.channels.size());
  for (bool isDone = false; !isDone;) {
    isDone = true;
    comparison.Match(isRemoved);
    for (std::size_t place = 0; place < fates.size(); ++place) {
      if (isRemoved[place]) continue;
      fates[place] = FateOf(comparison, place, isLookedFor, isSameScan);
      if (!IsToGo(list.channels[place], fates[place], policy)) continue;
      fates[place].kind = ListFate::Kind::Removed;
      isRemoved[place] = true;
      isDone = false;
    }
  }
  return fates;
}

namespace {

class ScanJudge {
 public:
  ScanJudge(const Comparison& comparison, const MergeBase* base, InputSignalType signal)
      : m_comparison(comparison), m_base(base), m_signal(signal), m_twins(signal) {
    m_fates.ofPlaces.resize(comparison.OfScan().size());
    m_isDeleted.resize(comparison.ScanNodes().Count());
    m_isUsed.resize(comparison.OfScan().size());
  }

  ScanFates Run(const std::vector<ListFate>& list) {
    for (const ListFate& fate : list) {
      if (fate.kind == ListFate::Kind::Matched) m_isUsed[fate.scanPlace] = true;
    }
    const Matching& matching = m_comparison.ListToScan();
    for (std::size_t node = 0; node < m_isDeleted.size(); ++node) {
      if (matching.leftOf[node] != kNone) Settle(node, ScanFate::Kind::Matched);
      if (matching.ambiguityOfRight[node] != kNone) Settle(node, ScanFate::Kind::Candidate);
    }
    HoldAgainstBase();
    for (std::size_t node = 0; node < m_isDeleted.size(); ++node) {
      if (!matching.IsOpenRight(node)) continue;
      const auto twin = m_twins.Find(m_comparison.ScanNodes().services[node]);
      if (twin) {
        SetMembers(node, {ScanFate::Kind::Twin, *twin});
      } else {
        Settle(node, m_isDeleted[node] ? ScanFate::Kind::Deleted : ScanFate::Kind::New);
      }
    }
    return std::move(m_fates);
  }

 private:
  void SetMembers(std::size_t node, const ScanFate& fate) {
    for (const std::size_t place : m_comparison.ScanNodes().members[node]) {
      m_fates.ofPlaces[place] = fate;
    }
  }

  /// The members that the list takes count, else the first; the others are the same again.
  void Settle(std::size_t node, ScanFate::Kind kind) {
    const std::vector<std::size_t>& members = m_comparison.ScanNodes().members[node];
    for (const std::size_t place : members) {
      const bool counts =
          kind == ScanFate::Kind::Matched ? m_isUsed[place] : place == members.front();
      m_fates.ofPlaces[place] = {counts ? kind : ScanFate::Kind::Twin, node};
    }
    m_twins.Add(m_comparison.ScanNodes().services[node], node);
  }

  /// What the base has and the list has not any more, the user deleted. A twin of what the list has
  /// is none of these.
  void HoldAgainstBase() {
    if (m_base == nullptr) return;
    m_fates.isReplaced.assign(m_base->entries.size(), false);
    std::vector<bool> isOut;
    for (std::size_t i = 0; i < m_base->entries.size(); ++i) {
      isOut.push_back(m_comparison.IsLinked(i) || m_base->entries[i].isTwin);
    }
    const Nodes& scanNodes = m_comparison.ScanNodes();
    std::vector<bool> isTaken(m_comparison.OfScan().size());
    for (std::size_t place = 0; place < isTaken.size(); ++place) {
      const std::size_t node = scanNodes.nodeOf[place];
      const bool isOpen = m_comparison.ListToScan().IsOpenRight(node);
      isTaken[place] = m_comparison.ListToScan().leftOf[node] != kNone ||
                       (isOpen && m_twins.Find(scanNodes.services[node]));
    }
    const Nodes left = GroupNodes(m_comparison.OfBase(), isOut, m_signal);
    const Nodes right = GroupNodes(m_comparison.OfScan(), isTaken, m_signal);
    const Matching matching = MatchNodes(left, right, m_signal);
    for (std::size_t node = 0; node < left.Count(); ++node) {
      if (matching.rightOf[node] == kNone) continue;
      const std::size_t place = right.members[matching.rightOf[node]].front();
      for (const std::size_t entry : left.members[node]) {
        m_fates.isReplaced[entry] = true;
        if (m_base->entries[entry].isListed) m_isDeleted[scanNodes.nodeOf[place]] = true;
      }
    }
  }

  const Comparison& m_comparison;
  const MergeBase* m_base;
  InputSignalType m_signal;
  Twins m_twins;
  std::vector<bool> m_isDeleted;
  std::vector<bool> m_isUsed;  ///< by place: the list was matched with it
  ScanFates m_fates;
};

}  // namespace

ScanFates FatesOfScan(const Comparison& comparison, const MergeBase* base,
                      const std::vector<ListFate>& list, InputSignalType signal) {
  return ScanJudge(comparison, base, signal).Run(list);
}

}  // namespace zortunedex::kit::merge

#include "kit/merge/planning/planner.h"

#include <algorithm>
#include <tuple>

#include "kit/merge/fields/put_back.h"
#include "kit/merge/fingerprint.h"
#include "kit/merge/matching/tiers.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::merge {
namespace {

constexpr std::uint32_t kNotRunning = 1;

std::string ShownName(const Channel& channel) {
  return utf::FromWide(channel.displayName.empty() ? channel.name : channel.displayName);
}

/// A base says nothing of what is the list's alone.
void ForgetMarks(Channel& channel) {
  channel.favorite = 0;
  channel.lock = 0;
}

/// In the list's order, what the list has not behind it.
bool IsEntryBefore(const BaseEntry& a, const BaseEntry& b) {
  const auto order = [](const BaseEntry& entry) {
    return std::tuple(entry.channel.index == 0, entry.channel.index, entry.isTwin, entry.isListed);
  };
  if (order(a) != order(b)) return order(a) < order(b);
  return a.channel.index == 0 && IsContentBefore(a.channel, b.channel);
}

bool AreKnownAndDiffer(std::uint32_t a, std::uint32_t b) { return a != 0 && b != 0 && a != b; }

bool IsMoved(const Service& from, const Service& to, InputSignalType signal) {
  const Recognition& recognition = RecognitionOf(signal);
  const Site was = SiteOf(from, recognition);
  const Site is = SiteOf(to, recognition);
  if (AreApart(was, is, recognition.tolerance)) return true;
  const bool isFrequencyKnown = was.value != 0 && is.value != 0;
  if (!isFrequencyKnown && AreKnownAndDiffer(from[Part::Rf], to[Part::Rf])) return true;
  const auto positions = static_cast<std::int32_t>(from[Part::Position] - to[Part::Position]);
  if (AreKnownAndDiffer(from[Part::Position], to[Part::Position]) &&
      (positions > std::int32_t{kNearPosition} || positions < -std::int32_t{kNearPosition})) {
    return true;
  }
  return AreKnownAndDiffer(from[Part::Network], to[Part::Network]) ||
         AreKnownAndDiffer(from[Part::Stream], to[Part::Stream]);
}

bool IsRenumbered(const Service& from, const Service& to) {
  const bool isOtherMinor = from[Part::Major] != 0 && from[Part::Minor] != to[Part::Minor];
  return isOtherMinor || AreKnownAndDiffer(from[Part::Number], to[Part::Number]) ||
         AreKnownAndDiffer(from[Part::Major], to[Part::Major]) ||
         AreKnownAndDiffer(from[Part::Program], to[Part::Program]);
}

}  // namespace

Planner::Planner(const ChannelTable& list, const MergeBase* base, const ChannelTable& scan,
                 const MergePolicy& policy)
    : m_list(list),
      m_base(base),
      m_policy(policy),
      m_table(list.signal, policy),
      m_combiner(m_table, policy),
      m_comparison(list, base, scan, policy),
      m_fingerprint(FingerprintOf(scan)) {
  if (base == nullptr) return;
  for (std::size_t i = 0; i < base->entries.size(); ++i) {
    if (base->entries[i].isTwin) m_toldTwins.insert(m_comparison.OfBase()[i]);
  }
}

MergePlan Planner::Run() {
  const bool isSameScan = m_base != nullptr && m_base->scan == m_fingerprint;
  m_fates = FatesOfList(m_comparison, m_list, m_policy, isSameScan);
  m_scanFates = FatesOfScan(m_comparison, m_base, m_fates, m_list.signal);
  m_plan.country = m_list.country;
  m_plan.signal = m_list.signal;
  m_becomes = m_list.channels;
  for (std::size_t place = 0; place < m_fates.size(); ++place) PlanListed(place);
  for (std::size_t place = 0; place < m_scanFates.ofPlaces.size(); ++place) PlanScanned(place);
  PlaceChannels();
  for (const std::size_t twin : m_untold) PlanTwin(twin);
  AddBase();
  m_plan.changesList = !SameChannels(m_list.channels, m_plan.result.channels);
  return std::move(m_plan);
}

Change Planner::NewChange(Code code, const Channel& shown, const Service& service) const {
  Change change;
  change.code = code;
  change.identity = IdentityText(service, m_list.signal);
  change.name = ShownName(shown);
  return change;
}

Service Planner::ReadAgain(const Channel& channel) const {
  Texts texts;
  return ReadService(channel, {m_list.signal, m_policy.looseNames}, texts);
}

void Planner::PlanListed(std::size_t place) {
  const Channel& channel = m_list.channels[place];
  const ListFate& fate = m_fates[place];
  Change change = NewChange(Code::Unchanged, channel, m_comparison.OfList()[place]);
  change.index = channel.index;
  change.inList = place;
  change.isFavorite = channel.favorite != 0;
  change.isLocked = channel.lock != 0;
  if (fate.kind == ListFate::Kind::Matched) PlanMatched(place, change);
  if (fate.kind == ListFate::Kind::Ambiguous) PlanAmbiguous(place, change);
  if (fate.kind == ListFate::Kind::Gone || fate.kind == ListFate::Kind::Removed) {
    PlanGone(place, change);
  }
  m_plan.changes.push_back(std::move(change));
}

Channel Planner::InFull(std::size_t place) const {
  const Channel& scan = m_comparison.ScanAt(m_fates[place].scanPlace);
  if (m_policy.toldList.empty()) return scan;
  const Told list{&m_list.channels[place], &m_policy.toldList[place]};
  const BaseEntry* entry = m_comparison.SeenEntryOf(place);
  if (entry == nullptr) return PutBack(m_table, scan, list, {});
  const auto at = static_cast<std::size_t>(entry - m_base->entries.data());
  return PutBack(m_table, scan, list, {&entry->channel, &m_policy.toldBase[at]});
}

void Planner::PlanMatched(std::size_t place, Change& change) {
  const Channel& list = m_list.channels[place];
  const std::size_t scanPlace = m_fates[place].scanPlace;
  const Channel scan = InFull(place);
  const BaseEntry* entry = m_comparison.EntryOf(place);
  Combined combined = m_combiner.Combine(list, entry, scan);
  const bool isFoundAgain = entry != nullptr && (entry->absent > 0 || entry->isMarked);
  change.code = CodeOf(combined, list, isFoundAgain);
  const std::size_t node = m_comparison.ScanNodes().nodeOf[scanPlace];
  m_changeOf.try_emplace(node, m_plan.changes.size());
  if (m_assigned.insert(scanPlace).second) {
    change.inScan.push_back(m_comparison.TablePlaceOf(scanPlace));
  }
  if (change.code == Code::Unchanged) return;
  const BaseEntry* seen = m_comparison.SeenEntryOf(place);
  const Versions versions{&list, seen == nullptr ? nullptr : &seen->channel, &scan,
                          &combined.channel};
  ShowFields(versions,
             {combined.isRenamedByBoth || combined.isNameUnclear, combined.isTuningEdited}, change);
  change.identity = IdentityText(ReadAgain(combined.channel), m_list.signal);
  change.name = ShownName(combined.channel);
  m_becomes[place] = std::move(combined.channel);
}

Code Planner::CodeOf(const Combined& combined, const Channel& list, bool isFoundAgain) const {
  if (combined.isRenamedByBoth) return Code::RenamedByBoth;
  if (combined.isNameUnclear) return Code::NameUnclear;
  if (combined.isTuningEdited) return Code::TuningEdited;
  if (combined.isTuningChanged || combined.isOtherChanged) {
    const Service from = ReadAgain(list);
    const Service to = ReadAgain(combined.channel);
    if (IsMoved(from, to, m_list.signal)) return Code::Moved;
    if (IsRenumbered(from, to)) return Code::Renumbered;
  }
  if (combined.isRenamed) return Code::Renamed;
  if (combined.isTuningChanged) return Code::TuningChanged;
  if (combined.isOtherChanged) return Code::StreamsChanged;
  if (isFoundAgain) return Code::FoundAgain;
  return combined.isStatusChanged ? Code::StreamsChanged : Code::Unchanged;
}

void Planner::ShowFields(const Versions& versions, const Conflicts& conflicts,
                         Change& change) const {
  change.fields = DifferencesOf(m_table, versions, conflicts, m_policy.utf8);
}

void Planner::PlanAmbiguous(std::size_t place, Change& change) {
  change.code = Code::Ambiguous;
  const Matching& matching = m_comparison.ListToScan();
  const std::size_t node = m_comparison.ListNodes().nodeOf[place];
  const Ambiguity& ambiguity = matching.ambiguities[matching.ambiguityOfLeft[node]];
  for (const std::size_t candidate : ambiguity.right) {
    const std::size_t first = m_comparison.ScanNodes().members[candidate].front();
    const Channel& channel = m_comparison.ScanAt(first);
    change.candidates.push_back(
        {IdentityText(m_comparison.OfScan()[first], m_list.signal), ShownName(channel)});
    if (m_changeOf.try_emplace(candidate, m_plan.changes.size()).second) {
      change.inScan.push_back(m_comparison.TablePlaceOf(first));
    }
  }
}

void Planner::PlanGone(std::size_t place, Change& change) {
  const BaseEntry* entry = m_comparison.EntryOf(place);
  change.absent = m_fates[place].absent;
  if (m_fates[place].kind == ListFate::Kind::Removed) {
    change.code = Code::Removed;
    return;
  }
  change.code = Code::NotFound;
  if (m_policy.gone != Gone::Mark) return;
  if (m_table.Status() == nullptr) {
    if (entry == nullptr || !entry->isMarked) change.code = Code::CannotMark;
    return;
  }
  change.code = Code::Marked;
  Channel marked = Whole(m_list.channels[place], m_table.Layout());
  if (NumberIn(marked, *m_table.Status()) == kNotRunning) return;
  SetNumber(marked, *m_table.Status(), kNotRunning);
  const BaseEntry* seen = m_comparison.SeenEntryOf(place);
  const Versions versions{&m_list.channels[place], seen == nullptr ? nullptr : &seen->channel,
                          nullptr, &marked};
  ShowFields(versions, {}, change);
  m_becomes[place] = std::move(marked);
}

bool Planner::IsToldTwin(std::size_t scanPlace) const {
  return m_toldTwins.contains(m_comparison.OfScan()[scanPlace]);
}

void Planner::PlanScanned(std::size_t place) {
  const ScanFate& fate = m_scanFates.ofPlaces[place];
  using Kind = ScanFate::Kind;
  if (fate.kind == Kind::Matched || fate.kind == Kind::Candidate) return;
  if (fate.kind == Kind::Twin && IsToldTwin(place)) {
    m_untold.push_back(place);
    return;
  }
  const Service& service = m_comparison.OfScan()[place];
  Change change = NewChange(Code::New, m_comparison.ScanAt(place), service);
  change.inScan.push_back(m_comparison.TablePlaceOf(place));
  if (fate.kind == Kind::Twin) change.code = Code::TwiceInScan;
  if (fate.kind == Kind::Deleted && m_policy.deleted == Deleted::StayOut) {
    change.code = Code::DeletedByUser;
  } else if (fate.kind != Kind::Twin && m_policy.newOnes == NewOnes::None) {
    change.code = Code::NewLeftOut;
  }
  if (change.code != Code::New) {
    m_otherChanges.push_back(std::move(change));
    m_otherNodes.push_back(fate.kind == Kind::Twin ? kNone : fate.node);
    return;
  }
  m_fresh.push_back({m_combiner.New(m_comparison.ScanAt(place)), service, kNone, place});
  change.name = ShownName(m_fresh.back().channel);
  m_freshChanges.push_back(std::move(change));
}

/// Numbers the channels, and brings the changes into their order.
void Planner::PlaceChannels() {
  std::vector<Placed> listed;
  bool isRemoved = false;
  for (std::size_t place = 0; place < m_becomes.size(); ++place) {
    if (m_fates[place].kind == ListFate::Kind::Removed) {
      isRemoved = true;
      continue;
    }
    const Service service =
        m_policy.newOnes == NewOnes::Transponder ? ReadAgain(m_becomes[place]) : Service();
    listed.push_back({std::move(m_becomes[place]), service, place});
  }
  std::map<std::size_t, Change> changes;
  for (std::size_t i = 0; i < m_fresh.size(); ++i) {
    changes.emplace(m_fresh[i].scanPlace, std::move(m_freshChanges[i]));
  }
  m_plan.result = {m_list.country, m_list.signal, {}};
  m_resultPlaces.assign(m_becomes.size(), kNone);
  std::vector<Placed> placed =
      Place(std::move(listed), std::move(m_fresh), m_policy.newOnes, m_list.signal, isRemoved);
  for (Placed& one : placed) {
    const UINT index = one.channel.index;
    if (one.listPlace != kNone) {
      m_resultPlaces[one.listPlace] = m_plan.result.channels.size();
      m_plan.changes[one.listPlace].resultIndex = index;
    } else {
      Change& change = changes.at(one.scanPlace);
      change.resultIndex = index;
      m_freshIndexes[one.scanPlace] = index;
      m_changeOf[m_comparison.ScanNodes().nodeOf[one.scanPlace]] = m_plan.changes.size();
      m_plan.changes.push_back(std::move(change));
    }
    m_plan.result.channels.push_back(std::move(one.channel));
  }
  for (std::size_t i = 0; i < m_otherChanges.size(); ++i) {
    m_changeOf.try_emplace(m_otherNodes[i], m_plan.changes.size());
    m_plan.changes.push_back(std::move(m_otherChanges[i]));
  }
}

/// A twin that was told before goes with its service.
void Planner::PlanTwin(std::size_t place) {
  const std::size_t node = m_scanFates.ofPlaces[place].node;
  const auto change = m_changeOf.find(node);
  if (change != m_changeOf.end()) {
    m_plan.changes[change->second].inScan.push_back(m_comparison.TablePlaceOf(place));
  }
}

void Planner::AddBase() {
  m_plan.base = {m_list.country, m_list.signal, m_fingerprint, {}};
  AddBaseOfListed();
  AddBaseOfScanned();
  AddOldBase();
  std::stable_sort(m_plan.base.entries.begin(), m_plan.base.entries.end(), IsEntryBefore);
}

void Planner::AddBaseOfListed() {
  for (std::size_t place = 0; place < m_fates.size(); ++place) {
    const ListFate& fate = m_fates[place];
    if (fate.kind == ListFate::Kind::Removed) continue;
    const BaseEntry* before = m_comparison.EntryOf(place);
    const Channel& result = m_plan.result.channels[m_resultPlaces[place]];
    BaseEntry entry = before != nullptr ? *before : BaseEntry{m_list.channels[place], 0};
    if (before == nullptr) entry.isSeen = false;
    if (fate.kind == ListFate::Kind::Matched) {
      entry = {m_combiner.ForBase({m_comparison.ScanAt(fate.scanPlace), InFull(place)},
                                  m_comparison.SeenEntryOf(place), result)};
      entry.source = HashOf(m_comparison.ScanAt(fate.scanPlace));
    } else if (fate.kind == ListFate::Kind::Gone) {
      entry.absent = fate.absent;
      entry.isMarked = entry.isMarked || m_policy.gone == Gone::Mark;
    }
    entry.isListed = true;
    entry.channel.index = result.index;
    entry.result = HashOf(result);
    ForgetMarks(entry.channel);
    m_plan.base.entries.push_back(std::move(entry));
  }
}

void Planner::AddBaseOfScanned() {
  for (std::size_t place = 0; place < m_scanFates.ofPlaces.size(); ++place) {
    const ScanFate::Kind kind = m_scanFates.ofPlaces[place].kind;
    if (kind == ScanFate::Kind::Matched) continue;
    const Channel& scan = m_comparison.ScanAt(place);
    BaseEntry entry{m_combiner.ForBase({scan, scan}, nullptr, scan), 0, 0, HashOf(scan)};
    ForgetMarks(entry.channel);
    const auto index = m_freshIndexes.find(place);
    entry.channel.index = index == m_freshIndexes.end() ? 0 : index->second;
    if (index != m_freshIndexes.end()) entry.result = HashOf(m_combiner.New(scan));
    entry.isListed = index != m_freshIndexes.end() || kind == ScanFate::Kind::Deleted;
    entry.isTwin = kind == ScanFate::Kind::Twin;
    m_plan.base.entries.push_back(std::move(entry));
  }
}

/// What the user deleted stays deleted, and what lies outside the scan stays known.
void Planner::AddOldBase() {
  if (m_base == nullptr) return;
  const LookedFor isLookedFor(m_comparison, m_list.signal, m_policy.scope);
  for (std::size_t i = 0; i < m_base->entries.size(); ++i) {
    const BaseEntry& entry = m_base->entries[i];
    if (m_comparison.IsLinked(i) || entry.isTwin || m_scanFates.isReplaced[i]) continue;
    if (!entry.isListed && isLookedFor(m_comparison.OfBase()[i])) continue;
    m_plan.base.entries.push_back(entry);
    m_plan.base.entries.back().channel.index = 0;
    m_plan.base.entries.back().result = 0;
  }
}

}  // namespace zortunedex::kit::merge

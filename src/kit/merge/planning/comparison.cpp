#include "kit/merge/planning/comparison.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "kit/merge/fingerprint.h"
#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {
Comparison::Comparison(const ChannelTable& list, const MergeBase* base, const ChannelTable& scan,
                       const MergePolicy& policy)
    : m_listTable(list),
      m_baseTable(base),
      m_scanTable(scan),
      m_reading{list.signal, policy.looseNames} {
  OrderScan();
  Texts texts;
  m_list = ReadServices(list.channels, m_reading, texts);
  if (base != nullptr) {
    for (const BaseEntry& entry : base->entries) {
      m_base.push_back(ReadService(entry.channel, m_reading, texts));
    }
  }
  for (std::size_t i = 0; i < m_order.size(); ++i) {
    m_scan.push_back(ReadService(ScanAt(i), m_reading, texts));
  }
  LinkBase();
  m_scanNodes = GroupNodes(m_scan, {}, m_reading.signal);
  FindSameAsLastTime();
  for (std::size_t place = 0; place < m_scan.size(); ++place) {
    const std::size_t node = m_scanNodes.nodeOf[place];
    m_memberLike.try_emplace({node, HashOf(ScanAt(place))}, place);
    m_memberNamed.try_emplace({node, m_scan[place][Part::Name]}, place);
  }
}

void Comparison::OrderScan() {
  m_order.resize(m_scanTable.channels.size());
  std::iota(m_order.begin(), m_order.end(), std::size_t{0});
  std::stable_sort(m_order.begin(), m_order.end(), [this](std::size_t a, std::size_t b) {
    return IsContentBefore(m_scanTable.channels[a], m_scanTable.channels[b]);
  });
}

const Channel& Comparison::ScanAt(std::size_t scanPlace) const {
  return m_scanTable.channels[m_order[scanPlace]];
}

const BaseEntry* Comparison::EntryOf(std::size_t listPlace) const {
  const std::size_t entry = m_entryOf[listPlace];
  return entry == kNone ? nullptr : &m_baseTable->entries[entry];
}

const BaseEntry* Comparison::SeenEntryOf(std::size_t listPlace) const {
  const BaseEntry* entry = EntryOf(listPlace);
  return entry != nullptr && entry->isSeen ? entry : nullptr;
}

std::size_t Comparison::MemberFor(std::size_t listPlace, std::size_t scanNode) const {
  if (const BaseEntry* entry = SeenEntryOf(listPlace)) {
    const auto last = m_memberLike.find({scanNode, entry->source});
    if (last != m_memberLike.end()) return last->second;
  }
  const auto like = m_memberLike.find({scanNode, HashOf(m_listTable.channels[listPlace])});
  if (like != m_memberLike.end()) return like->second;
  const auto named = m_memberNamed.find({scanNode, m_asScanned[listPlace][Part::Name]});
  if (named != m_memberNamed.end()) return named->second;
  return m_scanNodes.members[scanNode].front();
}

void Comparison::LinkBase() {
  m_entryOf.assign(m_list.size(), kNone);
  m_isLinked.assign(m_base.size(), false);
  m_asScanned = m_list;
  if (m_base.empty()) return;
  LinkUntouched();
  LinkLikely();
  LinkCopies();
  for (std::size_t place = 0; place < m_list.size(); ++place) {
    if (m_entryOf[place] == kNone) continue;
    m_isLinked[m_entryOf[place]] = true;
    if (SeenEntryOf(place) == nullptr) continue;
    m_asScanned[place] = Overlaid(m_list[place], m_base[m_entryOf[place]]);
  }
}

/// Channels that are what the last merge left at that index.
void Comparison::LinkUntouched() {
  std::map<std::pair<UINT, std::uint64_t>, std::size_t> left;
  for (std::size_t i = 0; i < m_base.size(); ++i) {
    const BaseEntry& entry = m_baseTable->entries[i];
    if (entry.isListed && entry.result != 0) left[{entry.channel.index, entry.result}] = i;
  }
  for (std::size_t place = 0; place < m_list.size(); ++place) {
    const Channel& channel = m_listTable.channels[place];
    const auto found = left.find({channel.index, HashOf(channel)});
    if (found == left.end()) continue;
    m_entryOf[place] = found->second;
    m_isLinked[found->second] = true;
    left.erase(found);
  }
}

/// The others by what identifies them.
void Comparison::LinkLikely() {
  std::vector<bool> isListOut;
  std::vector<bool> isBaseOut = m_isLinked;
  for (const std::size_t entry : m_entryOf) isListOut.push_back(entry != kNone);
  for (std::size_t i = 0; i < m_base.size(); ++i) {
    if (m_baseTable->entries[i].isTwin) isBaseOut[i] = true;
  }
  const Nodes list = GroupNodes(m_list, isListOut, m_reading.signal);
  const Nodes base = GroupNodes(m_base, isBaseOut, m_reading.signal);
  const Matching links = MatchNodes(list, base, m_reading.signal);
  for (std::size_t node = 0; node < list.Count(); ++node) {
    if (links.rightOf[node] == kNone) continue;
    const std::vector<std::size_t>& entries = base.members[links.rightOf[node]];
    for (const std::size_t entry : entries) m_isLinked[entry] = true;
    // Several of each go together in their order.
    const std::vector<std::size_t>& places = list.members[node];
    for (std::size_t i = 0; i < places.size(); ++i) {
      m_entryOf[places[i]] = entries[std::min(i, entries.size() - 1)];
    }
  }
}

/// What the user copied since goes by what it is a copy of.
void Comparison::LinkCopies() {
  std::map<Service, std::size_t> known;
  for (std::size_t i = 0; i < m_base.size(); ++i) {
    if (m_isLinked[i]) known.try_emplace(IdentityKey(m_base[i], m_reading.signal), i);
  }
  for (std::size_t place = 0; place < m_list.size(); ++place) {
    if (m_entryOf[place] != kNone) continue;
    const auto found = known.find(IdentityKey(m_list[place], m_reading.signal));
    if (found != known.end()) m_entryOf[place] = found->second;
  }
}

/// What the scan has as it was in the last one is that, whatever the user made of it meanwhile.
void Comparison::FindSameAsLastTime() {
  std::map<std::uint64_t, std::size_t> scanned;
  for (std::size_t place = 0; place < m_scan.size(); ++place) {
    scanned.try_emplace(HashOf(ScanAt(place)), m_scanNodes.nodeOf[place]);
  }
  m_lastTime.assign(m_list.size(), kNone);
  for (std::size_t place = 0; place < m_list.size(); ++place) {
    const BaseEntry* entry = SeenEntryOf(place);
    const auto found = entry == nullptr ? scanned.end() : scanned.find(entry->source);
    if (found != scanned.end()) m_lastTime[place] = found->second;
  }
}

void Comparison::Match(const std::vector<bool>& isLeftOut) {
  m_listNodes = GroupNodes(m_asScanned, isLeftOut, m_reading.signal, m_lastTime);
  Hints hints;
  for (std::size_t node = 0; node < m_listNodes.Count(); ++node) {
    const std::size_t last = m_lastTime[m_listNodes.members[node].front()];
    if (last != kNone) hints.emplace_back(node, last);
  }
  m_matching = MatchNodes(m_listNodes, m_scanNodes, m_reading.signal, hints);
}

}  // namespace zortunedex::kit::merge

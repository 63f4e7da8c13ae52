#include "kit/merge/planning/comparison.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

#include "kit/merge/matching/tiers.h"

namespace merge {
namespace {

/// An order in which only channels that are the same in everything are equal.
bool IsBefore(const Channel& a, const Channel& b) {
  return std::tie(a.frequency, a.number, a.tsid, a.offset, a.name, a.block, a.displayName) <
         std::tie(b.frequency, b.number, b.tsid, b.offset, b.name, b.block, b.displayName);
}

/// True where nothing speaks against an entry being what it was when the list had it at that place.
bool MayBeSame(const Service& list, const Service& base, InputSignalType signal) {
  const Recognition& recognition = RecognitionOf(signal);
  const std::uint32_t reach = recognition.tolerance;
  if (AreApart(SiteOf(list, recognition), SiteOf(base, recognition), reach)) return false;
  for (const Part part : {Part::Network, Part::Stream, Part::Number, Part::Major, Part::Minor}) {
    if (list[part] != 0 && base[part] != 0 && list[part] != base[part]) return false;
  }
  return list[Part::Number] != 0 || list[Part::Major] != 0 || list[Part::Name] == base[Part::Name];
}

}  // namespace

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
}

void Comparison::OrderScan() {
  m_order.resize(m_scanTable.channels.size());
  std::iota(m_order.begin(), m_order.end(), std::size_t{0});
  std::stable_sort(m_order.begin(), m_order.end(), [this](std::size_t a, std::size_t b) {
    return IsBefore(m_scanTable.channels[a], m_scanTable.channels[b]);
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

void Comparison::LinkBase() {
  m_entryOf.assign(m_list.size(), kNone);
  m_isLinked.assign(m_base.size(), false);
  m_asScanned = m_list;
  if (m_base.empty()) return;
  std::vector<bool> isTwin;
  for (const BaseEntry& entry : m_baseTable->entries) isTwin.push_back(entry.isTwin);
  const Nodes listNodes = GroupNodes(m_list, {}, m_reading.signal);
  const Nodes baseNodes = GroupNodes(m_base, isTwin, m_reading.signal);
  const Matching links =
      MatchNodes(listNodes, baseNodes, m_reading.signal, IndexHints(listNodes, baseNodes));
  for (std::size_t place = 0; place < m_list.size(); ++place) {
    const std::size_t node = links.rightOf[listNodes.nodeOf[place]];
    if (node == kNone) continue;
    const std::vector<std::size_t>& entries = baseNodes.members[node];
    const auto seen = std::ranges::find_if(
        entries, [this](std::size_t entry) { return m_baseTable->entries[entry].isSeen; });
    m_entryOf[place] = seen == entries.end() ? entries.front() : *seen;
    for (const std::size_t entry : entries) m_isLinked[entry] = true;
    if (SeenEntryOf(place) != nullptr) {
      m_asScanned[place] = Overlaid(m_list[place], m_base[m_entryOf[place]]);
    }
  }
}

/// Channels that stand where the last merge left them are those that it left there.
Hints Comparison::IndexHints(const Nodes& listNodes, const Nodes& baseNodes) const {
  std::map<UINT, std::size_t> entries;
  for (std::size_t i = 0; i < m_base.size(); ++i) {
    const BaseEntry& entry = m_baseTable->entries[i];
    if (entry.isListed && !entry.isTwin && entry.channel.index != 0) {
      entries.try_emplace(entry.channel.index, i);
    }
  }
  Hints hints;
  for (std::size_t place = 0; place < m_list.size(); ++place) {
    const auto found = entries.find(m_listTable.channels[place].index);
    if (found == entries.end()) continue;
    if (!MayBeSame(m_list[place], m_base[found->second], m_reading.signal)) continue;
    hints.emplace_back(listNodes.nodeOf[place], baseNodes.nodeOf[found->second]);
  }
  return hints;
}

/// What the scan has as it was in the last one is that, whatever the user made of it meanwhile.
Hints Comparison::SameAsLastTime() const {
  std::map<Service, std::size_t> scanned;
  for (std::size_t i = 0; i < m_scanNodes.Count(); ++i) {
    scanned.try_emplace(m_scanNodes.services[i], i);
  }
  Hints hints;
  for (std::size_t node = 0; node < m_listNodes.Count(); ++node) {
    const std::size_t place = m_listNodes.members[node].front();
    if (SeenEntryOf(place) == nullptr) continue;
    const auto found = scanned.find(m_base[m_entryOf[place]]);
    if (found != scanned.end()) hints.emplace_back(node, found->second);
  }
  return hints;
}

void Comparison::Match(const std::vector<bool>& isLeftOut) {
  m_listNodes = GroupNodes(m_asScanned, isLeftOut, m_reading.signal);
  m_matching = MatchNodes(m_listNodes, m_scanNodes, m_reading.signal, SameAsLastTime());
}

}  // namespace merge

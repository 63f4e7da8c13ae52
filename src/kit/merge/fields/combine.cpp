#include "kit/merge/fields/combine.h"

#include <algorithm>

#include "kit/merge/fields/streams.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;

namespace merge {

/// The three that meet, with blocks of the whole size. A base that no scan had says nothing.
struct Combiner::Three {
  Channel list;
  std::optional<Channel> base;
  Channel scan;
};

namespace {

void Take(const Channel& from, const Field& row, Channel& to, bool& isChanged) {
  if (IsSame(from, to, row)) return;
  Copy(from, row, to);
  isChanged = true;
}

std::uint32_t NumberOf(const Channel& channel, const Layout& layout, const char* attribute) {
  for (const auto& rows : {layout.channel, layout.satelliteParams}) {
    if (const Field* row = station_blocks::FindField(rows, attribute)) {
      return NumberIn(channel, *row);
    }
  }
  return 0;
}

/// What a record answers for itself follows from its block.
void Follow(const Channel& scan, const Layout& layout, InputSignalType signal, Channel& channel) {
  for (const char* attribute : {"serviceType", "ServiceType"}) {
    for (const auto& rows : {layout.channel, layout.elementStreams}) {
      const Field* row = station_blocks::FindField(rows, attribute);
      if (row != nullptr && IsSame(scan, channel, *row)) channel.serviceType = scan.serviceType;
    }
  }
  if (signal != InputSignalDVBSatellite && signal != InputSignalDVBTerrestrial) return;
  channel.scrambled = static_cast<BOOL>(NumberOf(channel, layout, "CA"));
  bool hasAll = true;
  for (const station_blocks::StreamList& list : layout.lists) {
    const std::string_view element = list.element;
    if (element != "DsmccStream" && element != "MhpAitStream") continue;
    hasAll = hasAll && station_blocks::Fetch(channel.block.data() + list.countOffset, 4) != 0;
  }
  channel.mhp = hasAll ? 1 : 0;
}

/// What services are recognised by is kept as the scan had it, so that the same scan finds it
/// again.
bool IsForMatching(std::string_view attribute) {
  constexpr std::string_view kAttributes[] = {
      "freq",         "Frequency",       "polarisation", "orbitalPosition",
      "westPosition", "physicalChannel", "serviceType",  "EnsembelLab"};
  return std::ranges::find(kAttributes, attribute) != std::end(kAttributes);
}

bool IsFilled(const Channel& channel, InputSignalType signal) {
  return channel.displayName.empty() || channel.displayName == channel.name ||
         channel.displayName == FilledName(channel, signal);
}

}  // namespace

bool Combiner::SaysNothing(const Channel& scan, const FieldRule& rule) const {
  const std::string_view attribute = rule.row->attribute;
  const Layout& layout = m_table.Layout();
  if (attribute == "westPosition") return NumberOf(scan, layout, "orbitalPosition") == 0;
  if (attribute == "minorChannel") return NumberOf(scan, layout, "majorChannel") == 0;
  if (!rule.isZeroUnknown) return false;
  const std::uint32_t value = NumberIn(scan, *rule.row);
  return value == 0 || (rule.row->form == Form::Polarisation && value > INT32_MAX);
}

Combined Combiner::Combine(const Channel& list, const BaseEntry* base, const Channel& scan) const {
  const Layout& layout = m_table.Layout();
  Three of{Whole(list, layout), std::nullopt, Whole(scan, layout)};
  if (base != nullptr && base->isSeen) of.base = Whole(base->channel, layout);
  Combined combined;
  combined.channel = of.list;
  for (const FieldRule& rule : m_table.Fields()) {
    if (rule.rule == Rule::Name) {
      CombineName(of, *rule.row, combined);
    } else if (rule.rule == Rule::Tuning) {
      CombineTuning(of, rule, combined);
    } else if (rule.rule == Rule::Status) {
      Take(of.scan, *rule.row, combined.channel, combined.isStatusChanged);
    } else if ((rule.rule == Rule::Identity || rule.rule == Rule::Scans) &&
               !SaysNothing(of.scan, rule)) {
      Take(of.scan, *rule.row, combined.channel, combined.isOtherChanged);
    }
  }
  CombineDisplayName(of, combined);
  if (CombineStreams(m_table, of.scan, combined.channel)) combined.isOtherChanged = true;
  Follow(of.scan, layout, m_table.Signal(), combined.channel);
  const bool isChanged = combined.isTuningChanged || combined.isRenamed ||
                         combined.isOtherChanged || combined.isStatusChanged;
  if (!isChanged) combined.channel = list;
  return combined;
}

void Combiner::CombineName(const Three& of, const Field& row, Combined& combined) const {
  if (of.scan.name.empty() || of.scan.name == of.list.name) return;
  if (of.base) {
    const bool isUsers = of.list.name != of.base->name;
    combined.isRenamedByBoth = isUsers && of.scan.name != of.base->name;
    if (isUsers) return;
  } else if (!of.list.name.empty() && of.list.name == of.list.displayName) {
    combined.isNameUnclear = true;
    return;
  }
  Take(of.scan, row, combined.channel, combined.isRenamed);
}

void Combiner::CombineDisplayName(const Three& of, Combined& combined) const {
  const bool isUsers =
      of.base ? of.list.displayName != of.base->displayName : !IsFilled(of.list, m_table.Signal());
  if (isUsers || combined.isNameUnclear || of.scan.name.empty()) return;
  const WideText shown = of.scan.displayName.empty()
                             ? FilledName(combined.channel, m_table.Signal())
                             : of.scan.displayName;
  if (shown == combined.channel.displayName) return;
  combined.channel.displayName = shown;
  combined.isRenamed = true;
}

void Combiner::CombineTuning(const Three& of, const FieldRule& rule, Combined& combined) const {
  const Field& row = *rule.row;
  if (SaysNothing(of.scan, rule) || IsSame(of.scan, of.list, row)) return;
  // Whose the number of a channel is, says the policy.
  const bool isNumber = row.source == station_blocks::Source::PhysicalChannel;
  const bool isEdited =
      !isNumber && of.base && !SaysNothing(*of.base, rule) && !IsSame(*of.base, of.list, row);
  const bool isKept = isEdited && m_policy.tuning == EditedTuning::Keep;
  if (isEdited && (!isKept || !IsSame(*of.base, of.scan, row))) combined.isTuningEdited = true;
  if (!isKept) Take(of.scan, row, combined.channel, combined.isTuningChanged);
}

Channel Combiner::New(const Channel& scan) const {
  Channel channel = Whole(scan, m_table.Layout());
  channel.index = 0;
  channel.favorite = 0;
  channel.lock = 0;
  if (channel.displayName.empty()) channel.displayName = FilledName(channel, m_table.Signal());
  return channel;
}

Channel Combiner::ForBase(const Scanned& scan, const BaseEntry* base, const Channel& result) const {
  const Layout& layout = m_table.Layout();
  const Channel raw = Whole(scan.raw, layout);
  Channel channel = Whole(scan.full, layout);
  const bool isSeen = base != nullptr && base->isSeen;
  const Channel before = Whole(isSeen ? base->channel : result, layout);
  for (const FieldRule& rule : m_table.Fields()) {
    const bool isFilled =
        rule.rule == Rule::Tuning || rule.rule == Rule::Scans || rule.rule == Rule::Status;
    if (IsForMatching(rule.row->attribute)) {
      Copy(raw, *rule.row, channel);
    } else if (isFilled && SaysNothing(channel, rule)) {
      Copy(before, *rule.row, channel);
    }
    if (rule.rule == Rule::Name && isSeen && raw.name.empty()) {
      Copy(before, *rule.row, channel);
      channel.displayName = before.displayName;
    }
  }
  return channel;
}

}  // namespace merge

}  // namespace zortunedex::kit

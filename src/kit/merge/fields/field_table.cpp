#include "kit/merge/fields/field_table.h"

#include <algorithm>

#include "kit/model/channel_layout.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Rows;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

namespace merge {
namespace {

struct NamedRule {
  std::string_view attribute;
  Rule rule;
  bool isZeroUnknown = false;
};

/// Everything else is the scan's.
constexpr NamedRule kNamedRules[] = {
    {"name", Rule::Name},
    {"nameDisplay", Rule::DisplayName},
    {"index", Rule::Lists},
    {"favor", Rule::Lists},
    {"lock", Rule::Lists},
    {"azimuth", Rule::Lists},
    {"elevation", Rule::Lists},
    {"DiSEqC_Msg", Rule::Lists},
    {"LNB_LowFreq", Rule::Lists},
    {"LNB_HighFreq", Rule::Lists},
    {"LNB_SwitchFreq", Rule::Lists},
    {"freq", Rule::Tuning, true},
    {"Frequency", Rule::Tuning, true},
    {"freqOffset", Rule::Tuning},
    {"polarisation", Rule::Tuning, true},
    {"westPosition", Rule::Tuning},
    {"orbitalPosition", Rule::Tuning, true},
    {"symbolRate", Rule::Tuning, true},
    {"innerFECRate", Rule::Tuning},
    {"modulation", Rule::Tuning},
    {"spectralInversion", Rule::Tuning},
    {"serviceID", Rule::Identity, true},
    {"ServiceID", Rule::Identity, true},
    {"TSID", Rule::Identity, true},
    {"ONID", Rule::Identity, true},
    {"NetworkID", Rule::Identity, true},
    {"majorChannel", Rule::Identity, true},
    {"minorChannel", Rule::Identity},
    {"programNumber", Rule::Identity, true},
    {"CNI0", Rule::Identity, true},
    {"CNI1", Rule::Identity, true},
    {"runningStatus", Rule::Status},
};

/// The RF channel of types that are tuned by it, else a number that hosts show.
NamedRule RuleOfNumber(InputSignalType signal, Numbers numbers) {
  const bool isLists =
      numbers == Numbers::Keep || (numbers == Numbers::ByType && signal == InputSignalDVBSatellite);
  return {"physicalChannel", isLists ? Rule::Lists : Rule::Tuning, true};
}

NamedRule RuleOf(std::string_view attribute, InputSignalType signal, Numbers numbers) {
  if (attribute == "physicalChannel") return RuleOfNumber(signal, numbers);
  for (const NamedRule& rule : kNamedRules) {
    if (rule.attribute == attribute) return rule;
  }
  return {attribute, Rule::Scans};
}

/// "VideoStream" is selected by "videoStream".
std::string NameOfSelection(const char* element) {
  std::string name = element;
  name.front() = static_cast<char>(name.front() - 'A' + 'a');
  return name;
}

bool IsOfStreams(const Layout& layout, const Field& row) {
  if (row.source != Source::Block || row.width == 0) return false;
  if (layout.components != nullptr && row.offset == layout.components->countOffset) return true;
  return std::ranges::any_of(layout.lists, [&row](const StreamList& list) {
    return row.offset == list.countOffset || NameOfSelection(list.element) == row.attribute;
  });
}

}  // namespace

FieldTable::FieldTable(InputSignalType signal, const MergePolicy& policy)
    : m_signal(signal), m_layout(LayoutOf(signal)) {
  for (const auto& rows : {m_layout.channel, m_layout.elementStreams, m_layout.satelliteParams}) {
    AddFields(rows, policy);
  }
  AddStreams();
}

void FieldTable::AddFields(Rows<Field> rows, const MergePolicy& policy) {
  for (const Field& row : rows) {
    if (row.use != Use::Both || IsOfStreams(m_layout, row)) continue;
    const NamedRule named = RuleOf(row.attribute, m_signal, policy.numbers);
    m_fields.push_back({&row, named.rule, named.isZeroUnknown});
    if (named.rule == Rule::Status) m_status = &row;
  }
}

void FieldTable::AddStreams() {
  for (const StreamList& list : m_layout.lists) {
    if (list.use != Use::Both) continue;
    m_streams.push_back(
        {&list, station_blocks::FindField(m_layout.elementStreams, NameOfSelection(list.element))});
  }
}

}  // namespace merge

}  // namespace zortunedex::kit

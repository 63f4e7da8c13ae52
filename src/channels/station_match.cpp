#include "channels/station_match.h"

#include <initializer_list>
#include <optional>

#include "channels/chan_info.h"
#include "core/station_blocks.h"
#include "core/task_block.h"

namespace station_match {

namespace {

using station_blocks::OffsetOf;

bool SameWords(const StationView& a, const StationView& b,
               std::initializer_list<std::size_t> offsets) {
  for (const std::size_t offset : offsets) {
    const std::optional<std::uint32_t> word = a.Word(offset);
    if (!word || word != b.Word(offset)) return false;
  }
  return true;
}

bool SameAtsc(const StationView& a, const StationView& b) {
  using station_blocks::kAtscChannel;
  return a.physicalChannel == b.physicalChannel &&
         SameWords(
             a, b,
             {OffsetOf(kAtscChannel, "majorChannel"), OffsetOf(kAtscChannel, "minorChannel")});
}

bool SameDvb(const StationView& a, const StationView& b) {
  using station_blocks::kDvbhChannel;
  using station_blocks::kDvbsChannel;
  constexpr std::size_t kNetwork = OffsetOf(kDvbsChannel, "ONID");
  constexpr std::size_t kService = OffsetOf(kDvbsChannel, "serviceID");
  static_assert(kNetwork == OffsetOf(kDvbhChannel, "ONID"));
  static_assert(kService == OffsetOf(kDvbhChannel, "serviceID"));
  return a.transportStream == b.transportStream && SameWords(a, b, {kNetwork, kService});
}

}  // namespace

bool AreSame(InputSignalType listType, const StationView& a, const StationView& b) {
  switch (listType) {
    case InputSignalAnalogAntenna:
    case InputSignalAnalogCable:
      return a.physicalChannel == b.physicalChannel;
    case InputSignalFMRadio:
      return a.frequency == b.frequency;
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
      return SameAtsc(a, b);
    case InputSignalDVBSatellite:
      return SameDvb(a, b) &&
             SameWords(a, b, {OffsetOf(station_blocks::kDvbsSatelliteParams, "symbolRate")});
    case InputSignalDVBTerrestrial:
    case InputSignalDVBHandheld:
      return SameDvb(a, b);
    case InputSignalTDMBMobile:
      return SameWords(a, b,
                       {OffsetOf(station_blocks::kTdmbStreams, "ServiceID"),
                        OffsetOf(station_blocks::kTdmbStreams, "Component_index")});
    case InputSignalISDBTerrestrialOneSeg:
      return SameWords(a, b, {OffsetOf(station_blocks::kOneSegChannel, "physicalChannel")});
    default:
      return false;
  }
}

bool IsOf(IChannelInfo* channelInfo, InputSignalType listType, const StationView& probe) {
  if (const CChanInfo* ours = CChanInfo::From(channelInfo)) {
    return AreSame(listType, ours->ViewStation(), probe);
  }
  _StationTuneInfo station = {};
  // What a failing getter left there is not ours to free.
  if (FAILED(channelInfo->GetStationInfo(&station))) return false;
  const TaskBlock block = TaskBlock::Attach(station.pbInformation);
  return AreSame(listType, StationView::Of(station), probe);
}

}  // namespace station_match

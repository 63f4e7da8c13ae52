#include "kit/merge/merge_base.h"

#include "kit/merge/fingerprint.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::merge {

bool operator==(const BaseEntry& a, const BaseEntry& b) {
  return a.absent == b.absent && a.result == b.result && a.source == b.source &&
         a.isSeen == b.isSeen && a.isListed == b.isListed && a.isMarked == b.isMarked &&
         a.isTwin == b.isTwin && FirstDifference(a.channel, b.channel, nullptr) == nullptr;
}

MergeBase BaseOf(const ChannelTable& scan) {
  MergeBase base{scan.country, scan.signal, FingerprintOf(scan), {}};
  base.entries.reserve(scan.channels.size());
  for (const Channel& channel : scan.channels)
    base.entries.push_back({channel, 0, HashOf(channel), HashOf(channel)});
  return base;
}

std::string BaseFileName(DWORD country, InputSignalType signal) {
  return "base-" + std::to_string(country) + "-" + SignalTypeName(signal) + ".json";
}

}  // namespace zortunedex::kit::merge

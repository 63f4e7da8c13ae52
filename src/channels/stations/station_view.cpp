#include "channels/stations/station_view.h"

#include <algorithm>
#include <cstring>

#include "core/station_blocks.h"

StationView StationView::Of(const _StationTuneInfo& station) {
  StationView view = {station.lPhysicalChannel, station.dwFrequency, station.lTSID, {}, 0};
  if (station.pbInformation != nullptr) {
    view.bytes = {station.pbInformation, station.cbInformation};
    view.blockSize = station.cbInformation;
  }
  return view;
}

std::optional<std::uint32_t> StationView::Word(std::size_t offset) const {
  constexpr std::size_t kWidth = 4;
  if (blockSize < kWidth || offset > blockSize - kWidth) return std::nullopt;
  BYTE word[kWidth] = {};
  if (offset < bytes.size()) {
    std::memcpy(word, bytes.data() + offset, std::min(kWidth, bytes.size() - offset));
  }
  return station_blocks::Fetch(word, kWidth);
}

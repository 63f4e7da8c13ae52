#include "channels/stations/station_view.h"

StationView StationView::Of(const _StationTuneInfo& station) {
  StationView view = {station.lPhysicalChannel, station.dwFrequency, station.lTSID, {}, 0};
  if (station.pbInformation != nullptr) {
    view.bytes = {station.pbInformation, station.cbInformation};
    view.blockSize = station.cbInformation;
  }
  return view;
}

#include "channels/stations/station_view.h"

#include "channels/channel_records.h"

namespace {

TEST(StationView, WordsEndWithTheBlock) {
  Station station(InputSignalAnalogCable, 11);
  station.Word(0, 0x04030201).Word(7, 0xFFEEDDCC);
  const StationView view = StationView::Of(*station.Get());
  EXPECT_EQ(0x04030201u, view.Word(0));
  EXPECT_EQ(0xFFEEDDCCu, view.Word(7));
  for (const std::size_t outside : {std::size_t{8}, std::size_t{11}, std::size_t{1000},
                                    static_cast<std::size_t>(-1), static_cast<std::size_t>(-4)}) {
    EXPECT_EQ(std::nullopt, view.Word(outside)) << outside;
  }
  EXPECT_EQ(std::nullopt, StationView::Of(_StationTuneInfo{}).Word(0));
  Station shortOne(InputSignalAnalogCable, 3);
  EXPECT_EQ(std::nullopt, StationView::Of(*shortOne.Get()).Word(0));
}

TEST(StationView, BytesThatWereNotFilledReadAsZero) {
  const BYTE bytes[] = {1, 2, 3, 4, 5, 6};
  StationView view;
  view.bytes = bytes;
  view.blockSize = 12;
  EXPECT_EQ(0x04030201u, view.Word(0));
  EXPECT_EQ(0x00000605u, view.Word(4));
  EXPECT_EQ(0u, view.Word(8));
  EXPECT_EQ(std::nullopt, view.Word(9));
}

}  // namespace

// How often saving a channel copies its block, and what it does where there is no memory for that.
//
// Linux only: MSXML allocates without operator new, which is what counts here
#include <new>

#include "channels/stations/owned_station.h"
#include "core/station_blocks.h"
#include "platform/com_error.h"
#include "platform/lack_of_memory.h"
#include "reliability/linux/every_allocation.h"
#include "support/dom_text.h"
#include "support/fake_channel.h"
#include "xml/codecs/channel_codec.h"

namespace {

/// Writes a record with a block of that size into an empty element; answers how often it asked for
/// memory.
int AllocationsOfWriting(InputSignalType signalType, std::size_t blockSize) {
  FakeChannel record(signalType, blockSize);
  for (int count = 0;; ++count) {
    const TextDocument document("<Channel/>");
    const memory_faults::Scope scope(count, memory_faults::Lasts::Once);
    try {
      const HRESULT hr = xml::CodeChannel(document.root, &record, xml::Direction::Write);
      if (scope.HasFailed()) continue;
      ExpectHr(S_OK, hr);
      return count;
    } catch (const ComError&) {
    } catch (const std::bad_alloc&) {
    }
  }
}

}  // namespace

// A host with sixty thousand channels waits for each of them.
TEST(ChannelCopies, AWholeBlockIsWrittenAsItIs) {
  for (const InputSignalType signalType : {InputSignalFMRadio, InputSignalDVBSatellite}) {
    const std::size_t size = station_blocks::Find(signalType)->size;
    const int whole = AllocationsOfWriting(signalType, size);
    EXPECT_EQ(whole, AllocationsOfWriting(signalType, size + 1));
    EXPECT_EQ(whole + 1, AllocationsOfWriting(signalType, size - 1)) << "filled up with zeros";
  }
}

// A record without memory for its copy answers as one without a station does. This one has no text,
// so nothing else asks for memory before the element would be left without its channel.
TEST(ChannelCopies, AMissingCopyIsLackOfMemory) {
  FakeChannel record(InputSignalFMRadio, station_blocks::Find(InputSignalFMRadio)->size);
  const TextDocument document("<Channel/>");
  ForEveryAllocation({[] {},
                      [&] {
                        return AnsweringLackOfMemory([&] {
                          return xml::CodeChannel(document.root, &record, xml::Direction::Write);
                        });
                      },
                      [](HRESULT hr, bool hasFailed) {
                        EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY)) << HrText(hr);
                      }});
}

// And is raised: a type without a block fails, too, and is another thing.
TEST(ChannelCopies, AStationIsCopiedWholeOrRaised) {
  BYTE bytes[] = {1, 2, 3};
  _StationTuneInfo source = {};
  source.lTSID = 5;
  source.cbInformation = sizeof(bytes);
  source.pbInformation = bytes;
  OwnedStation copy;
  ForEveryAllocation({[] {},
                      [&] {
                        return AnsweringLackOfMemory(
                            [&] { return copy.Assign(source, InputSignalFMRadio); });
                      },
                      [&](HRESULT hr, bool hasFailed) {
                        ExpectHr(hasFailed ? E_OUTOFMEMORY : S_OK, hr);
                        EXPECT_EQ(hasFailed, copy.Get().pbInformation == nullptr);
                        EXPECT_EQ(hasFailed ? 0 : 5, copy.Get().lTSID);
                      }});
}

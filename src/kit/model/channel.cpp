#include "kit/model/channel.h"

#include <algorithm>
#include <memory>

#include "kit/failure.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Source;

namespace {

struct TaskMemoryDeleter {
  void operator()(BYTE* memory) const { CoTaskMemFree(memory); }
};

WideText Text(HRESULT hr, const Bstr& text) {
  return SUCCEEDED(hr) ? WideText(text.View()) : WideText();
}

void ReadStation(IChannelInfo* record, Channel& channel) {
  _StationTuneInfo station = {};
  Require(record->GetStationInfo(&station), "a station cannot be read");
  const std::unique_ptr<BYTE, TaskMemoryDeleter> block(station.pbInformation);
  channel.number = static_cast<UINT>(station.lPhysicalChannel);
  channel.frequency = station.dwFrequency;
  channel.offset = station.lOffsetFreq;
  channel.tsid = station.lTSID;
  if (block) channel.block.assign(block.get(), block.get() + station.cbInformation);
}

}  // namespace

Channel ReadChannel(IChannelInfo* record) {
  Channel channel;
  Require(record->GetChannelIndex(&channel.index), "a channel without an index");
  ReadStation(record, channel);
  Bstr text;
  // Records without a name or a service type say so with a failure: they then have none.
  HRESULT hr = record->GetChannelName(text.Receive());
  channel.name = Text(hr, text);
  hr = record->GetChannelDspName(text.Receive());
  channel.displayName = Text(hr, text);
  if (FAILED(record->GetServiceType(&channel.serviceType))) channel.serviceType = ServiceUnknown;
  Require(record->GetFavor(&channel.favorite), "a favourite mark cannot be read");
  Require(record->GetLock(&channel.lock), "a lock cannot be read");
  Require(record->IsScrambled(&channel.scrambled), "a scrambled mark cannot be read");
  Require(record->GetMhp(&channel.mhp), "an MHP mark cannot be read");
  return channel;
}

void WriteChannel(const Channel& channel, InputSignalType signal, IChannelInfo* record) {
  std::vector<BYTE> block = channel.block;
  _StationTuneInfo station = {};
  station.InputSignal = signal;
  station.lPhysicalChannel = static_cast<LONG>(channel.number);
  station.dwFrequency = channel.frequency;
  station.lOffsetFreq = channel.offset;
  station.lTSID = channel.tsid;
  station.cbInformation = static_cast<DWORD>(block.size());
  station.pbInformation = block.data();
  const Bstr displayName{WideView(channel.displayName)};
  Require(record->SetChannelDspName(displayName.Get()), "the display name cannot be set");
  Require(record->SetStationInfo(&station), "the station cannot be set");
  Require(record->SetFavor(channel.favorite), "the favourite mark cannot be set");
  Require(record->SetLock(channel.lock), "the lock cannot be set");
}

std::uint32_t SourceValue(const Channel& channel, Source source) {
  switch (source) {
    case Source::Index:
      return channel.index;
    case Source::PhysicalChannel:
      return channel.number;
    case Source::Frequency:
      return channel.frequency;
    case Source::OffsetFrequency:
      return static_cast<std::uint32_t>(channel.offset);
    case Source::TransportStream:
      return static_cast<std::uint32_t>(channel.tsid);
    case Source::Favorite:
      return channel.favorite;
    case Source::Lock:
      return static_cast<std::uint32_t>(channel.lock);
    default:
      return 0;
  }
}

void SetSourceValue(Channel& channel, Source source, std::uint32_t value) {
  switch (source) {
    case Source::Index:
      channel.index = value;
      break;
    case Source::PhysicalChannel:
      channel.number = value;
      break;
    case Source::Frequency:
      channel.frequency = value;
      break;
    case Source::OffsetFrequency:
      channel.offset = static_cast<LONG>(value);
      break;
    case Source::TransportStream:
      channel.tsid = static_cast<LONG>(value);
      break;
    case Source::Favorite:
      channel.favorite = value;
      break;
    case Source::Lock:
      channel.lock = static_cast<BOOL>(value);
      break;
    default:
      break;
  }
}

namespace {

/// Attribute that keeps the byte at `offset`.
const char* AttributeAt(const Layout& layout, std::size_t offset) {
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    for (const Field& row : rows) {
      if (row.width != 0 && offset >= row.offset && offset < row.offset + std::size_t{row.width}) {
        return row.attribute;
      }
    }
  }
  for (const station_blocks::StreamList& list : layout.lists) {
    const std::size_t last = list.offset + std::size_t{list.capacity} * list.entrySize;
    if (offset >= list.offset && offset < last) return list.element;
  }
  return layout.components != nullptr ? "Components" : "block";
}

}  // namespace

const char* FirstDifference(const Channel& a, const Channel& b, const Layout* layout) {
  if (a.displayName != b.displayName) return "display name";
  if (a.name != b.name) return "name";
  for (const auto& [source, name] :
       {std::pair{Source::Index, "index"}, std::pair{Source::PhysicalChannel, "number"},
        std::pair{Source::Frequency, "frequency"}, std::pair{Source::OffsetFrequency, "offset"},
        std::pair{Source::TransportStream, "TSID"}, std::pair{Source::Favorite, "favourite mark"},
        std::pair{Source::Lock, "lock"}}) {
    if (SourceValue(a, source) != SourceValue(b, source)) return name;
  }
  if (a.block == b.block) return nullptr;
  const std::size_t common = std::min(a.block.size(), b.block.size());
  const auto end = a.block.begin() + static_cast<std::ptrdiff_t>(common);
  const auto different = std::mismatch(a.block.begin(), end, b.block.begin()).first;
  if (different == end || layout == nullptr) return "block";
  return AttributeAt(*layout, static_cast<std::size_t>(different - a.block.begin()));
}

bool SameChannels(const std::vector<Channel>& a, const std::vector<Channel>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Channel& x, const Channel& y) {
    return FirstDifference(x, y, nullptr) == nullptr;
  });
}

}  // namespace zortunedex::kit

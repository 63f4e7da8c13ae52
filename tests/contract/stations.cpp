#include "contract/stations.h"

#include <algorithm>
#include <cstring>

#include "core/station_blocks.h"
#include "support/expect.h"

namespace {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Source;
using station_blocks::Use;

// A value of its own for every place and every channel.
std::uint32_t ValueFor(const Field& field, unsigned seed) {
  return seed * 0x9E3779B9U + field.offset * 0x01000193U + 1;
}

// The words of these numbers read back as the same number.
std::uint32_t WordFor(Form form, unsigned seed) {
  switch (form) {
    case Form::Polarisation:
      return 1 + seed % 4;
    case Form::FecRate:
      return 1 + seed % 8;
    case Form::Modulation:
      return 1 + seed % 25;
    default:
      return 1 + seed % 3;
  }
}

void FillField(const Field& field, BYTE* base, unsigned seed) {
  BYTE* place = base + field.offset;
  switch (field.form) {
    case Form::Number:
      return station_blocks::Store(place, field.width, ValueFor(field, seed));
    case Form::Language:
      return station_blocks::StoreLanguage(place, ValueFor(field, seed) & 0xFFF);
    case Form::Text:
    case Form::Base64: {
      const std::string text = "T" + std::to_string(field.offset) + "-" + std::to_string(seed);
      return static_cast<void>(std::memcpy(place, text.data(), text.size()));
    }
    default:
      return station_blocks::Store(place, field.width, WordFor(field.form, seed));
  }
}

void FillRows(station_blocks::Rows<Field> rows, BYTE* base, unsigned seed) {
  for (const Field& field : rows) {
    if (field.width != 0 && field.use == Use::Both) FillField(field, base, seed);
  }
}

// One entry less than there is room for, so that the end of a list is seen.
void FillList(const station_blocks::StreamList& list, BYTE* block, unsigned seed) {
  if (list.use != Use::Both) return;
  const auto count = static_cast<std::uint16_t>(list.capacity - seed % 2);
  station_blocks::Store(block + list.countOffset, 4, count);
  for (std::uint16_t i = 0; i < count; ++i) {
    FillRows(station_blocks::EntryFields(list.entrySize), block + list.offset + i * list.entrySize,
             seed + i);
  }
}

void FillComponents(const station_blocks::ComponentList& list, BYTE* block, unsigned seed) {
  const std::uint16_t count = list.capacity;
  station_blocks::Store(block + list.countOffset, 4, count);
  for (std::uint16_t i = 0; i < count; ++i) {
    const std::string name = "C" + std::to_string(i) + "-" + std::to_string(seed % 100);
    std::memcpy(block + list.nameOffset + i * list.nameWidth, name.data(), name.size());
    station_blocks::Store(block + list.typeOffset + i * 4, 4, seed + i);
  }
}

// The values beside the block that the file keeps for this type.
void FillSource(const Field& field, Station& station, unsigned seed) {
  switch (field.source) {
    case Source::PhysicalChannel:
      station.info.lPhysicalChannel = static_cast<LONG>(1000 + seed);
      if (field.width != 0) {
        station_blocks::Store(station.block.data() + field.offset, field.width, 1000 + seed);
      }
      break;
    case Source::Frequency:
      station.info.dwFrequency = 3000000000U + seed;
      break;
    case Source::OffsetFrequency:
      station.info.lOffsetFreq = -7 - static_cast<LONG>(seed);
      break;
    case Source::TransportStream:
      station.info.lTSID = static_cast<LONG>(40000 + seed);
      break;
    default:
      break;
  }
}

Station MakeStation(InputSignalType signalType, const station_blocks::Layout& layout,
                    unsigned seed) {
  Station station;
  station.block.resize(layout.size);
  BYTE* block = station.block.data();
  FillRows(layout.channel, block, seed);
  FillRows(layout.elementStreams, block, seed);
  FillRows(layout.satelliteParams, block, seed);
  for (const station_blocks::StreamList& list : layout.lists) FillList(list, block, seed);
  if (layout.components != nullptr) FillComponents(*layout.components, block, seed);
  for (const Field& field : layout.channel) FillSource(field, station, seed);
  station.info.InputSignal = signalType;
  station.info.cbInformation = layout.size;
  return station;
}

std::string BlockDifference(const Station& expected, const Station& actual) {
  if (expected.block.size() != actual.block.size()) return "blocks of different sizes";
  const auto at = std::mismatch(expected.block.begin(), expected.block.end(), actual.block.begin());
  if (at.first == expected.block.end()) return {};
  return "blocks differ from offset " + std::to_string(at.first - expected.block.begin());
}

std::string Difference(const Channel& expected, const Channel& actual) {
  const _StationTuneInfo& a = expected.station.info;
  const _StationTuneInfo& b = actual.station.info;
  if (expected.index != actual.index) return "index " + std::to_string(actual.index);
  if (expected.favorite != actual.favorite || expected.lock != actual.lock) return "marks differ";
  if (expected.displayName != actual.displayName) return "display names differ";
  if (a.InputSignal != b.InputSignal || a.lCountry != b.lCountry) return "signal type or country";
  if (a.lPhysicalChannel != b.lPhysicalChannel) return "physical channels differ";
  if (a.dwFrequency != b.dwFrequency || a.lOffsetFreq != b.lOffsetFreq) return "frequencies differ";
  if (a.lTSID != b.lTSID) return "transport streams differ";
  if (a.cbInformation != b.cbInformation) return "byte counts differ";
  return BlockDifference(expected.station, actual.station);
}

}  // namespace

Channel MakeChannel(InputSignalType signalType, UINT index) {
  Channel channel;
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) {
    ADD_FAILURE() << "no block for type " << signalType;
    return channel;
  }
  channel.station = MakeStation(signalType, *layout, index);
  channel.displayName = Wide("D " + std::to_string(index)).View();
  // In every code page that the tests run with.
  channel.displayName += OLESTR("\u00E9");
  channel.index = index;
  channel.favorite = index % 3;
  channel.lock = static_cast<BOOL>(index % 2);
  return channel;
}

ComPtr<IChannelInfo> Add(const ComPtr<IChannelInfoMgr>& list, const Channel& channel) {
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, list->CreateChannelInfo(record.Receive()));
  Station station = channel.station;
  station.info.pbInformation = station.block.data();
  ExpectHr(E_NOTIMPL, record->SetChannelIndex(channel.index));
  ExpectHr(S_OK, record->SetChannelDspName(Bstr(channel.displayName).Get()));
  ExpectHr(S_OK, record->SetStationInfo(&station.info));
  ExpectHr(S_OK, record->SetFavor(channel.favorite));
  ExpectHr(S_OK, record->SetLock(channel.lock));
  ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
  return record;
}

void AddMade(const ComPtr<IChannelInfoMgr>& list, InputSignalType signalType, UINT count) {
  for (UINT index = 1; index <= count; ++index) Add(list, MakeChannel(signalType, index));
}

Channel Fetch(const ComPtr<IChannelInfo>& record) {
  Channel channel;
  _StationTuneInfo info = {};
  ExpectHr(S_OK, record->GetStationInfo(&info));
  if (info.pbInformation != nullptr) {
    channel.station.block.assign(info.pbInformation, info.pbInformation + info.cbInformation);
    CoTaskMemFree(info.pbInformation);
    info.pbInformation = nullptr;
  }
  channel.station.info = info;
  Bstr name;
  ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
  channel.displayName = name.View();
  ExpectHr(S_OK, record->GetChannelIndex(&channel.index));
  ExpectHr(S_OK, record->GetFavor(&channel.favorite));
  ExpectHr(S_OK, record->GetLock(&channel.lock));
  return channel;
}

void ExpectChannel(const Channel& expected, const Channel& actual, std::source_location where) {
  const std::string difference = Difference(expected, actual);
  if (difference.empty()) return;
  ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
      << "channel " << expected.index << " of type " << expected.station.info.InputSignal << ": "
      << difference;
}

void ExpectMade(const ComPtr<IChannelInfoMgr>& list, InputSignalType signalType, UINT count,
                std::source_location where) {
  const UINT actual = CountOf(list);
  if (count != actual) {
    ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
        << "expected " << count << " channels of type " << signalType << ", got " << actual;
    return;
  }
  for (UINT index = 1; index <= count; ++index) {
    ExpectChannel(MakeChannel(signalType, index), Fetch(ChannelAt(list, index)), where);
  }
}

#include "xml/codecs/channel_writer.h"

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "core/task_block.h"
#include "platform/text.h"
#include "words/tuning_texts.h"
#include "xml/codecs/base64.h"
#include "xml/codecs/channel_reader.h"
#include "xml/codecs/row_names.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"

namespace xml {
namespace {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Source;
using station_blocks::Use;

// What a record answers, fetched before anything is written.
struct ChannelValues {
  _StationTuneInfo station = {};
  UINT index = 0;
  UINT favorite = 0;
  BOOL lock = 0;
  Bstr name;
  Bstr displayName;
  // At least of the layout's size, zero where the record's own block ends earlier.
  TaskBlock block;
};

HRESULT FetchBlock(IChannelInfo* channelInfo, ChannelValues& values) {
  const HRESULT hr = channelInfo->GetStationInfo(&values.station);
  // What a failing getter left is not ours.
  BYTE* block = std::exchange(values.station.pbInformation, nullptr);
  if (SUCCEEDED(hr)) values.block = TaskBlock::Attach(block);
  return hr;
}

// A record that has no memory for its copy answers as one without a station does. Written so, the
// channel would be lost: the record is asked again while there is memory, else saving ends here.
HRESULT FetchStation(IChannelInfo* channelInfo, const station_blocks::Layout& layout,
                     ChannelValues& values) {
  const HRESULT hr = FetchBlock(channelInfo, values);
  if (FAILED(hr) || values.block) return hr;
  static_cast<void>(TaskBlock(layout.size));  // raises where there is none
  return FetchBlock(channelInfo, values);
}

HRESULT FetchValues(IChannelInfo* channelInfo, const station_blocks::Layout& layout,
                    ChannelValues& values) {
  HRESULT hr = FetchStation(channelInfo, layout, values);
  if (SUCCEEDED(hr)) hr = channelInfo->GetChannelIndex(&values.index);
  if (SUCCEEDED(hr)) hr = channelInfo->GetFavor(&values.favorite);
  if (SUCCEEDED(hr)) hr = channelInfo->GetLock(&values.lock);
  if (SUCCEEDED(hr)) hr = channelInfo->GetChannelName(values.name.Receive());
  if (SUCCEEDED(hr)) hr = channelInfo->GetChannelDspName(values.displayName.Receive());
  if (FAILED(hr)) return hr;
  if (!values.block || values.station.cbInformation >= layout.size) {
    return values.block ? S_OK : E_FAIL;
  }
  TaskBlock whole(layout.size);
  std::memcpy(whole.Get(), values.block.Get(), values.station.cbInformation);
  values.block = std::move(whole);
  return S_OK;
}

std::string_view BlockText(const BYTE* place, std::size_t width) {
  const auto text = reinterpret_cast<const char*>(place);
  return {text, strnlen(text, width)};
}

template <typename Enum>
HRESULT WriteWord(const dom::Element& element, dom::Name attribute,
                  std::string_view (*wordOf)(Enum), LONG value) {
  return element.SetNarrow(attribute, wordOf(static_cast<Enum>(value)));
}

HRESULT WriteBase64(const dom::Element& element, dom::Name attribute, std::string_view narrow) {
  const std::size_t length = text::CutLength(narrow, kTextSize - 1);
  char encoded[Base64EncodedSize(kTextSize)] = {};
  Base64Encode(reinterpret_cast<const BYTE*>(narrow.data()), static_cast<LONG>(length), encoded);
  return element.SetNarrow(attribute, encoded);
}

HRESULT WriteBlockField(const dom::Element& element, const Field& field, const BYTE* base) {
  const BYTE* place = base + field.offset;
  const auto number = [&] { return static_cast<LONG>(station_blocks::Fetch(place, field.width)); };
  switch (field.form) {
    case Form::Number:
      return SetAttr(element, NameOf(field), number());
    case Form::Language:
      return SetAttr(element, NameOf(field),
                     static_cast<LONG>(station_blocks::FetchLanguage(place)));
    case Form::Text:
      return element.SetNarrow(NameOf(field), BlockText(place, field.width));
    case Form::Base64:
      return WriteBase64(element, NameOf(field), BlockText(place, field.width));
    case Form::Polarisation:
      return WriteWord(element, NameOf(field), tuning_texts::PolarisationWord, number());
    case Form::FecRate:
      return WriteWord(element, NameOf(field), tuning_texts::FecRateWord, number());
    case Form::Modulation:
      return WriteWord(element, NameOf(field), tuning_texts::ModulationWord, number());
    case Form::SpectralInversion:
      return WriteWord(element, NameOf(field), tuning_texts::SpectralInversionWord, number());
  }
  return E_UNEXPECTED;
}

HRESULT WriteName(const dom::Element& channel, const Field& field, const Bstr& name) {
  if (field.form != Form::Base64) return SetAttr(channel, NameOf(field), name.Get());
  return WriteBase64(channel, NameOf(field), text::ToNarrow(name.View()));
}

HRESULT WriteChannelField(const dom::Element& channel, const Field& field,
                          const ChannelValues& values) {
  const auto number = [&](auto value) {
    return SetAttr(channel, NameOf(field), static_cast<LONG>(value));
  };
  switch (field.source) {
    case Source::Name:
      return WriteName(channel, field, values.name);
    case Source::DisplayName:
      return WriteName(channel, field, values.displayName);
    case Source::Index:
      return number(values.index);
    case Source::Favorite:
      return number(values.favorite);
    case Source::Lock:
      return number(values.lock);
    case Source::PhysicalChannel:
      return number(values.station.lPhysicalChannel);
    case Source::Frequency:
      return number(values.station.dwFrequency);
    case Source::OffsetFrequency:
      return number(values.station.lOffsetFreq);
    case Source::TransportStream:
      return number(values.station.lTSID);
    case Source::Block:
      break;
  }
  return WriteBlockField(channel, field, values.block.Get());
}

void WriteComponents(const dom::Element& streams, const station_blocks::ComponentList& list,
                     const BYTE* block) {
  const std::uint32_t count = station_blocks::Fetch(block + list.countOffset, 4);
  for (std::uint16_t i = 0; i < count && i < list.capacity; ++i) {
    const auto nameOffset = static_cast<std::uint16_t>(list.nameOffset + i * list.nameWidth);
    const auto typeOffset = static_cast<std::uint16_t>(list.typeOffset + i * 4);
    AppendNew(streams, paths::NameOf(paths::kComponents), [&](const dom::Element& child) {
      SetAttr(child, "ID", static_cast<LONG>(i));
      WriteBlockField(child, {"name", nameOffset, list.nameWidth, Form::Text}, block);
      WriteBlockField(child, {"type", typeOffset, 4}, block);
    });
  }
}

HRESULT WriteStreams(const dom::Element& channel, const station_blocks::Layout& layout,
                     const BYTE* block) {
  dom::Element streams;
  const HRESULT hr = GetElementStreams(channel, streams, true);
  if (hr != S_OK) return hr;
  for (const Field& field : layout.elementStreams) {
    if (field.use != Use::ReadOnly) WriteBlockField(streams, field, block);
  }
  if (layout.components != nullptr) WriteComponents(streams, *layout.components, block);
  for (const station_blocks::StreamList& list : layout.lists) {
    // An empty list answers E_INVALIDARG; the channel is saved without its elements.
    if (list.use != Use::ReadOnly) WriteStreamList(streams, list, block);
  }
  return S_OK;
}

HRESULT WriteSatelliteParams(const dom::Element& channel, const station_blocks::Layout& layout,
                             const BYTE* block) {
  dom::Element params;
  if (channel.SelectSingle(paths::kSatelliteParams, params) != S_OK) {
    const HRESULT hr = AppendNew(channel, paths::NameOf(paths::kSatelliteParams), params);
    if (hr != S_OK) return hr;
  }
  for (const Field& field : layout.satelliteParams) WriteBlockField(params, field, block);
  return S_OK;
}

}  // namespace

HRESULT WriteStreamList(const dom::Element& streams, const station_blocks::StreamList& list,
                        const BYTE* block) {
  const std::uint32_t count = station_blocks::Fetch(block + list.countOffset, 4);
  if (count == 0) return E_INVALIDARG;
  for (std::uint32_t i = 0; i < count && i < list.capacity; ++i) {
    const BYTE* entry = block + list.offset + std::size_t{i} * list.entrySize;
    const HRESULT hr = AppendNew(streams, NameOf(list), [&](const dom::Element& child) {
      for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
        WriteBlockField(child, field, entry);
      }
    });
    if (hr != S_OK) return hr;
  }
  return S_OK;
}

HRESULT WriteChannel(const dom::Element& channel, IChannelInfo* channelInfo,
                     const station_blocks::Layout& layout) {
  ChannelValues values;
  HRESULT hr = FetchValues(channelInfo, layout, values);
  if (FAILED(hr)) return hr;
  for (const Field& field : layout.channel) {
    if (field.use != Use::ReadOnly) WriteChannelField(channel, field, values);
  }
  hr = S_OK;
  if (!layout.elementStreams.Empty()) hr = WriteStreams(channel, layout, values.block.Get());
  if (hr == S_OK && !layout.satelliteParams.Empty()) {
    hr = WriteSatelliteParams(channel, layout, values.block.Get());
  }
  return hr;
}

}  // namespace xml

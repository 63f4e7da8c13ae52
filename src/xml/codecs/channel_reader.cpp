#include "xml/codecs/channel_reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "platform/text.h"
#include "words/tuning_texts.h"
#include "xml/codecs/base64.h"
#include "xml/codecs/row_names.h"
#include "xml/elements/element_paths.h"

namespace xml {
namespace {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

constexpr dom::Name kElementStreams = paths::NameOf(paths::kElementStreams);
constexpr dom::Name kSatelliteParams = paths::NameOf(paths::kSatelliteParams);

// Stream lists of a layout.
constexpr std::size_t kMostLists = 6;
static_assert(station_blocks::kDvbs.lists.count <= kMostLists &&
              station_blocks::kDvbt.lists.count <= kMostLists &&
              station_blocks::kTdmb.lists.count <= kMostLists &&
              station_blocks::kOneSeg.lists.count <= kMostLists &&
              station_blocks::kAtsc.lists.count <= kMostLists &&
              station_blocks::kDvbh.lists.count <= kMostLists);

constexpr std::size_t kLargestBlock = std::max(
    {station_blocks::kAnalog.size, station_blocks::kFmRadio.size, station_blocks::kAtsc.size,
     station_blocks::kDvbs.size, station_blocks::kDvbt.size, station_blocks::kDvbh.size,
     station_blocks::kTdmb.size, station_blocks::kOneSeg.size});

// The longest text in base64, with room for a line break in every group and for the terminator.
constexpr std::size_t kEncodedSize = Base64EncodedSize(kTextSize) * 3 / 2;

// The text of an attribute as narrow text; empty where it is missing.
struct NarrowText {
  char text[Base64DecodedSize(kEncodedSize)];

  NarrowText() { text[0] = '\0'; }

  void Read(const dom::Element& element, const Field& field) {
    if (field.form != Form::Base64) {
      element.GetNarrow(NameOf(field), text, kTextSize);
      return;
    }
    char encoded[kEncodedSize] = {};
    element.GetNarrow(NameOf(field), encoded, sizeof(encoded));
    Base64Decode(encoded, static_cast<LONG>(std::strlen(encoded)), reinterpret_cast<BYTE*>(text));
    text[text::CutLength(text, kTextSize - 1)] = '\0';
  }
};

// A word becomes its number; a word that is not known leaves the field at zero.
template <typename T>
void ReadWord(const dom::Element& element, const Field& field,
              HRESULT (*parse)(std::string_view, T*), BYTE* place) {
  NarrowText word;
  word.Read(element, field);
  T value{};
  if (parse(word.text, &value) == S_OK) {
    station_blocks::Store(place, sizeof(value), static_cast<std::uint32_t>(value));
  }
}

void ReadText(const dom::Element& element, const Field& field, BYTE* place) {
  char* const text = reinterpret_cast<char*>(place);
  if (field.form == Form::Base64) {
    NarrowText value;
    value.Read(element, field);
    return text::CopyCut(value.text, text, field.width);
  }
  element.GetNarrow(NameOf(field), text, std::min<std::size_t>(field.width, kTextSize));
  // A value that a host put into the document may hold a zero: what stands behind it is no text.
  const std::size_t length = strnlen(text, field.width);
  std::memset(text + length, 0, field.width - length);
}

void ReadBlockField(const dom::Element& element, const Field& field, BYTE* base) {
  BYTE* place = base + field.offset;
  const auto number = [&] { return static_cast<std::uint32_t>(AttrInt(element, NameOf(field))); };
  switch (field.form) {
    case Form::Number:
      return station_blocks::Store(place, field.width, number());
    case Form::Language:
      return station_blocks::StoreLanguage(place, number());
    case Form::Text:
    case Form::Base64:
      return ReadText(element, field, place);
    case Form::Polarisation:
      return ReadWord(element, field, tuning_texts::PolarisationFromNarrow, place);
    case Form::FecRate:
      return ReadWord(element, field, tuning_texts::FecRateFromNarrow, place);
    case Form::Modulation:
      return ReadWord(element, field, tuning_texts::ModulationFromNarrow, place);
    case Form::SpectralInversion:
      return ReadWord(element, field, tuning_texts::SpectralInversionFromNarrow, place);
  }
}

void ReadRecordNumber(const Field& field, LONG number, IChannelInfo* channelInfo,
                      _StationTuneInfo& station) {
  switch (field.source) {
    case Source::Index:
      channelInfo->SetChannelIndex(static_cast<UINT>(number));
      break;
    case Source::Favorite:
      channelInfo->SetFavor(static_cast<UINT>(number));
      break;
    case Source::Lock:
      channelInfo->SetLock(number);
      break;
    case Source::PhysicalChannel:
      station.lPhysicalChannel = number;
      break;
    case Source::Frequency:
      station.dwFrequency = static_cast<DWORD>(number);
      break;
    case Source::OffsetFrequency:
      station.lOffsetFreq = number;
      break;
    case Source::TransportStream:
      station.lTSID = number;
      break;
    case Source::Block:
    case Source::Name:
    case Source::DisplayName:
      break;
  }
}

void ReadChannelField(const dom::Element& channel, const Field& field, IChannelInfo* channelInfo,
                      _StationTuneInfo& station) {
  if (field.source == Source::DisplayName) {
    NarrowText name;
    name.Read(channel, field);
    channelInfo->SetChannelDspName(text::FromNarrow(name.text).Get());
    return;
  }
  if (field.source != Source::Block && field.source != Source::Name) {
    ReadRecordNumber(field, AttrInt(channel, NameOf(field)), channelInfo, station);
  }
  // A row may have its home in the block, or a second one.
  if (field.width != 0) ReadBlockField(channel, field, station.pbInformation);
}

// The list that an element belongs to; null for none. Most follow one of the same list or of the
// list before.
const StreamList* FindList(const dom::Element& child, station_blocks::Rows<StreamList> lists,
                           const StreamList* expected) {
  const auto isOf = [&child](const StreamList& row) { return child.HasTag(NameOf(row)); };
  const StreamList* found = std::find_if(expected, lists.end(), isOf);
  if (found != lists.end()) return found;
  found = std::find_if(lists.begin(), expected, isOf);
  return found != expected ? found : nullptr;
}

// Takes what fits the block; a file may hold more. The lists' elements may stand in any order.
void ReadStreamLists(const dom::Element& streams, station_blocks::Rows<StreamList> lists,
                     BYTE* block) {
  std::array<std::uint16_t, kMostLists> counts = {};
  const StreamList* expected = lists.begin();
  streams.VisitChildElements([&](const dom::Element& child) {
    const StreamList* list = FindList(child, lists, expected);
    if (list == nullptr) return;
    expected = list;
    std::uint16_t& count = counts[static_cast<std::size_t>(list - lists.begin())];
    if (count == list->capacity) return;
    BYTE* entry = block + list->offset + std::size_t{count} * list->entrySize;
    ++count;
    for (const Field& field : station_blocks::EntryFields(list->entrySize)) {
      ReadBlockField(child, field, entry);
    }
  });
}

// Every component says by its "ID" which slot it fills.
void ReadComponents(const dom::Element& streams, const station_blocks::ComponentList& list,
                    BYTE* block) {
  ForEachChild(streams, paths::kComponents, [&](const dom::Element& child) {
    const LONG id = AttrInt(child, "ID");
    if (id < 0 || id >= list.capacity) return;
    const auto slot = static_cast<std::size_t>(id);
    const auto nameOffset = static_cast<std::uint16_t>(list.nameOffset + slot * list.nameWidth);
    const auto typeOffset = static_cast<std::uint16_t>(list.typeOffset + slot * 4);
    ReadBlockField(child, {"name", nameOffset, list.nameWidth, Form::Text}, block);
    ReadBlockField(child, {"type", typeOffset, 4}, block);
  });
}

void ReadStreams(const dom::Element& streams, const station_blocks::Layout& layout, BYTE* block) {
  for (const Field& field : layout.elementStreams) {
    if (field.use != Use::WriteOnly) ReadBlockField(streams, field, block);
  }
  if (layout.components != nullptr) ReadComponents(streams, *layout.components, block);
  ReadStreamLists(streams, layout.lists, block);
}

// The first child of each name counts.
void ReadChildren(const dom::Element& channel, const station_blocks::Layout& layout, BYTE* block) {
  bool needsStreams = !layout.elementStreams.Empty();
  bool needsParams = !layout.satelliteParams.Empty();
  channel.VisitChildElements([&](const dom::Element& child) {
    if (needsStreams && child.HasTag(kElementStreams)) {
      needsStreams = false;
      ReadStreams(child, layout, block);
    } else if (needsParams && child.HasTag(kSatelliteParams)) {
      needsParams = false;
      for (const Field& field : layout.satelliteParams) ReadBlockField(child, field, block);
    }
  });
  dom::Element added;
  if (needsStreams) GetElementStreams(channel, added, false);
}

}  // namespace

HRESULT GetElementStreams(const dom::Element& channel, dom::Element& streams, bool create) {
  const HRESULT hr = channel.SelectSingle(paths::kElementStreams, streams);
  if (hr == S_OK && !create) return S_OK;
  if (hr == S_OK) channel.RemoveChild(streams);
  // Reading adds the empty element too: the document then has the shape that the writer gives it.
  return AppendNew(channel, paths::NameOf(paths::kElementStreams), streams);
}

HRESULT ReadChannel(const dom::Element& channel, IChannelInfo* channelInfo,
                    InputSignalType signalType, const station_blocks::Layout& layout) {
  BYTE block[kLargestBlock];
  std::memset(block, 0, layout.size);
  _StationTuneInfo station = {};
  station.InputSignal = signalType;
  station.cbInformation = layout.size;
  station.pbInformation = block;
  for (const Field& field : layout.channel) {
    if (field.use != Use::WriteOnly) ReadChannelField(channel, field, channelInfo, station);
  }
  ReadChildren(channel, layout, block);
  return channelInfo->SetStationInfo(&station);
}

}  // namespace xml

#include "kit/check/prediction/prediction.h"

#include <algorithm>
#include <array>

#include "kit/check/subject/base64.h"
#include "kit/check/subject/schema.h"
#include "kit/check/subject/words.h"
#include "kit/failure.h"

namespace zortunedex::kit::check {
namespace {

using markup::Element;
using markup::Index;
using markup::kNone;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

// Attributes of base64 are read into a buffer that has room for a line break in every group of the
// longest text.
constexpr std::size_t kMostEncoded = ((260 + 2) / 3 * 4 + 1) * 3 / 2 - 1;

void Put(std::string_view bytes, BYTE* place) { std::copy(bytes.begin(), bytes.end(), place); }

}  // namespace

std::string_view Prediction::Text(AttributeLookup& element, const Field& field) {
  const std::string_view value = element.ValueOf(field.attribute).value_or(std::string_view());
  if (field.form != Form::Base64) return m_text.Cut(value, NarrowText::kAttributeLimit, m_room);
  m_room = base64::Decode(m_text.Cut(value, kMostEncoded, m_room));
  m_room.resize(std::min(m_room.size(), m_room.find('\0')));
  return m_text.CutNarrow(m_room, NarrowText::kAttributeLimit);
}

void Prediction::ReadRow(AttributeLookup& element, const Field& field, BYTE* base) {
  BYTE* place = base + field.offset;
  const auto number = [&] {
    const auto text = element.ValueOf(field.attribute);
    return text ? Unsigned(ReadNumber(*text).value) : 0;
  };
  switch (field.form) {
    case Form::Number:
      return station_blocks::Store(place, field.width, number());
    case Form::Language:
      return station_blocks::StoreLanguage(place, number());
    case Form::Text:
    case Form::Base64:
      return Put(m_text.CutNarrow(Text(element, field), field.width - 1U), place);
    default:
      if (const auto value = words::Read(field.form, Text(element, field))) {
        station_blocks::Store(place, field.width, Unsigned(*value));
      }
  }
}

void Prediction::ReadChannelRow(AttributeLookup& element, const Field& field, Channel& channel) {
  if (field.source == Source::DisplayName) {
    channel.displayName = m_text.ToWide(Text(element, field));
    return;
  }
  if (field.source != Source::Block && field.source != Source::Name) {
    const auto text = element.ValueOf(field.attribute);
    SetSourceValue(channel, field.source, text ? Unsigned(ReadNumber(*text).value) : 0);
  }
  if (field.width != 0) ReadRow(element, field, channel.block.data());
}

void Prediction::ReadComponent(const Element& element, const station_blocks::ComponentList& list,
                               BYTE* block) {
  AttributeLookup component(m_document, element);
  const auto text = component.ValueOf("ID");
  const std::uint32_t slot = text ? Unsigned(ReadNumber(*text).value) : 0;
  if (slot >= list.capacity) return;
  const auto place = [slot](std::uint16_t first, std::size_t width) {
    return static_cast<std::uint16_t>(first + slot * width);
  };
  const Field name = {"name", place(list.nameOffset, list.nameWidth), list.nameWidth, Form::Text};
  // A second component with the same place replaces the name of the first one, unless it has none.
  if (component.ValueOf("name")) {
    std::fill_n(block + name.offset, name.width, BYTE{0});
    ReadRow(component, name, block);
  }
  ReadRow(component, {"type", place(list.typeOffset, 4), 4}, block);
}

void Prediction::ReadStreams(const Element& streams, const Layout& layout, BYTE* block) {
  const auto elements = m_document.Elements();
  AttributeLookup values(m_document, streams);
  for (const Field& field : layout.elementStreams) {
    if (field.use != Use::WriteOnly) ReadRow(values, field, block);
  }
  std::array<std::uint16_t, 8> counts = {};
  for (Index i = streams.firstChild; i != kNone; i = elements[i].next) {
    const std::string_view name = m_document.NameOf(elements[i]);
    if (layout.components != nullptr && name == "Components") {
      ReadComponent(elements[i], *layout.components, block);
    }
    const StreamList* list = schema::ListOf(layout, name);
    if (list == nullptr) continue;
    std::uint16_t& count = counts[static_cast<std::size_t>(list - layout.lists.begin())];
    if (count == list->capacity) continue;
    BYTE* entry = block + list->offset + std::size_t{count} * list->entrySize;
    ++count;
    AttributeLookup ofEntry(m_document, elements[i]);
    for (const Field& field : station_blocks::EntryFields(list->entrySize)) {
      ReadRow(ofEntry, field, entry);
    }
  }
}

// The record does that itself when its station is set.
void Prediction::FillDisplayName(Channel& channel, InputSignalType signal) const {
  const ComPtr<IChannelInfoMgr> list = m_database.List(signal);
  ComPtr<IChannelInfo> record;
  Require(list->CreateChannelInfo(record.Receive()), "a record cannot be made");
  WriteChannel(channel, signal, record.Get());
  Bstr name;
  if (SUCCEEDED(record->GetChannelDspName(name.Receive()))) channel.displayName = name.View();
}

const Channel& Prediction::Of(Index index, const ChannelGroup& group) {
  const Layout& layout = *group.layout;
  const Element& element = m_document.Elements()[index];
  Channel channel;
  channel.block.swap(m_channel.block);
  channel.block.assign(layout.size, 0);
  AttributeLookup values(m_document, element);
  for (const Field& field : layout.channel) {
    if (field.use != Use::WriteOnly) ReadChannelRow(values, field, channel);
  }
  const auto child = [&](const char* name) { return FirstChild(m_document, element, name); };
  if (!layout.elementStreams.Empty()) {
    const Index streams = child("ElementStreams");
    if (streams != kNone) {
      ReadStreams(m_document.Elements()[streams], layout, channel.block.data());
    }
  }
  const Index params = layout.satelliteParams.Empty() ? kNone : child("SatelliteParams");
  if (params != kNone) {
    AttributeLookup ofParams(m_document, m_document.Elements()[params]);
    for (const Field& field : layout.satelliteParams) {
      ReadRow(ofParams, field, channel.block.data());
    }
  }
  if (channel.displayName.empty()) FillDisplayName(channel, group.signal);
  m_channel = std::move(channel);
  return m_channel;
}

const char* Prediction::Difference(Index channel, const ChannelGroup& group, const Channel& read) {
  Of(channel, group);
  // It follows from the block.
  m_channel.name = read.name;
  return FirstDifference(m_channel, read, group.layout);
}

std::vector<Index> Prediction::InListOrder(const ChannelGroup& group) const {
  std::vector<Index> elements;
  elements.reserve(group.channels.size());
  const std::vector<std::uint32_t> indexes = IndexesOf(m_document, group);
  for (const std::size_t place : ListOrder(indexes)) {
    // A record with this index tells none, and comes into no list.
    if (indexes[place] != UINT32_MAX) elements.push_back(group.channels[place]);
  }
  return elements;
}

}  // namespace zortunedex::kit::check

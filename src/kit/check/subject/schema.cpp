#include "kit/check/subject/schema.h"

#include <algorithm>

#include "kit/check/subject/lookups.h"

namespace zortunedex::kit::check::schema {
namespace {

using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Rows;
using station_blocks::StreamList;
using station_blocks::Use;

struct Own {
  Part part;
  std::string_view attribute;
};

/// What no layout says.
constexpr Own kOwn[] = {
    {Part::Country, "name"},    {Part::Country, "countrycode"},
    {Part::ChannelSet, "type"}, {Part::ChannelSet, "inputSignalType"},
    {Part::ChannelSet, "Area"}, {Part::ChannelSet, "SubArea"},
    {Part::Area, "AreaIndex"},  {Part::Area, "name"},
    {Part::SubArea, "name"},    {Part::SubArea, "SubAreaIndex"},
    {Part::Components, "ID"},   {Part::Components, "name"},
    {Part::Components, "type"},
};

}  // namespace

Rows<Field> FieldsOf(Part part, const Layout& layout, const StreamList* list) {
  switch (part) {
    case Part::Channel:
      return layout.channel;
    case Part::ElementStreams:
      return layout.elementStreams;
    case Part::SatelliteParams:
      return layout.satelliteParams;
    case Part::Entry:
      return station_blocks::EntryFields(list->entrySize);
    default:
      return {};
  }
}

bool IsOwn(Part part, std::string_view attribute) {
  return std::ranges::any_of(
      kOwn, [&](const Own& own) { return own.part == part && own.attribute == attribute; });
}

const StreamList* ListOf(const Layout& layout, std::string_view element) {
  for (const StreamList& list : layout.lists) {
    if (IsCalled(element, list.element)) return &list;
  }
  return nullptr;
}

// A selection stands right in front of the count that it goes with.
CountFields CountFieldsOf(const Layout& layout, std::size_t countOffset) {
  const Field* before = nullptr;
  for (const Field& field : layout.elementStreams) {
    if (field.use == Use::WriteOnly) continue;
    if (field.offset == countOffset) {
      const bool isPair = before != nullptr && before->offset + 4U == countOffset &&
                          std::string_view(before->attribute).ends_with("Stream");
      return {&field, isPair ? before : nullptr};
    }
    before = &field;
  }
  return {};
}

bool IsFormless(std::int32_t type) {
  switch (type) {
    case InputSignalDVBCable:
    case InputSignalISDBCable:
    case InputSignalISDBSatellite:
    case InputSignalISDBTerrestrial:
      return true;
    default:
      return false;
  }
}

bool IsSignal(std::int32_t type) {
  return IsFormless(type) || station_blocks::Find(static_cast<InputSignalType>(type)) != nullptr;
}

}  // namespace zortunedex::kit::check::schema

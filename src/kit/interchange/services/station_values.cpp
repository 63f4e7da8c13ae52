#include "kit/interchange/services/station_values.h"

#include <algorithm>

#include "kit/model/channel_layout.h"
#include "kit/text/tuning_words.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;

namespace interchange {

const Field* FindAttribute(const Layout& layout, std::string_view attribute) {
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    if (const Field* row = station_blocks::FindField(rows, attribute)) return row;
  }
  return nullptr;
}

const StreamList* FindList(const Layout& layout, std::string_view element) {
  for (const StreamList& list : layout.lists) {
    if (element == list.element) return &list;
  }
  return nullptr;
}

StationValues::StationValues(const Channel& channel, InputSignalType signal,
                             const NarrowText& narrow)
    : m_channel(channel), m_layout(LayoutOf(signal)), m_narrow(narrow) {}

std::uint32_t StationValues::Number(std::string_view attribute) const {
  const Field* field = FindAttribute(m_layout, attribute);
  if (field == nullptr) return 0;
  if (field->source != Source::Block) return SourceValue(m_channel, field->source);
  return station_blocks::Fetch(m_channel.block.data() + field->offset, field->width);
}

std::string StationValues::Text(std::string_view attribute) const {
  const Field* field = FindAttribute(m_layout, attribute);
  if (field == nullptr) return {};
  return utf::FromWide(
      m_narrow.ToWide(UpToZero(m_channel.block.data() + field->offset, field->width)));
}

std::int32_t StationValues::WordValue(std::string_view attribute) const {
  const Field* field = FindAttribute(m_layout, attribute);
  if (field == nullptr) return -1;
  const std::uint32_t value =
      station_blocks::Fetch(m_channel.block.data() + field->offset, field->width);
  const std::int32_t word = tuning_words::AsRead(field->form, static_cast<std::int32_t>(value));
  return word == 0 ? -1 : word;
}

std::vector<StreamEntry> StationValues::Streams(std::string_view element) const {
  std::vector<StreamEntry> entries;
  const StreamList* list = FindList(m_layout, element);
  if (list == nullptr) return entries;
  const BYTE* block = m_channel.block.data();
  const std::size_t count =
      std::min<std::size_t>(station_blocks::Fetch(block + list->countOffset, 4), list->capacity);
  for (std::size_t i = 0; i < count; ++i) {
    const BYTE* entry = block + list->offset + i * list->entrySize;
    entries.push_back({station_blocks::Fetch(entry, 1), station_blocks::Fetch(entry + 2, 2),
                       station_blocks::FetchLanguage(entry + 4)});
  }
  return entries;
}

}  // namespace interchange

}  // namespace zortunedex::kit

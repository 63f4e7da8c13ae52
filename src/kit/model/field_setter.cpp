#include "kit/model/field_setter.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/model/channel_layout.h"
#include "kit/model/field_value.h"
#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

namespace {

Failure NotKept(const std::string& field, InputSignalType signal) {
  return {E_NOTIMPL, "the file does not keep " + field + " for " + SignalTypeName(signal)};
}

std::uint32_t Number(const std::string& field, const std::string& value, std::size_t width) {
  const std::int64_t highest = width == 1 ? UINT8_MAX : width == 2 ? UINT16_MAX : UINT32_MAX;
  const std::int64_t lowest = width < 4 ? 0 : INT32_MIN;
  const std::optional<std::int64_t> number = ParseNumber(value, lowest, highest);
  if (!number) {
    throw InvalidArgument{field + " takes a number from " + std::to_string(lowest) + " to " +
                          std::to_string(highest) + ", not '" + value + "'"};
  }
  return static_cast<std::uint32_t>(*number);
}

std::uint32_t Word(const Field& field, const std::string& value) {
  const std::optional<std::int32_t> word = tuning_words::Value(field.form, value);
  if (!word) {
    throw InvalidArgument{std::string(field.attribute) + " takes " +
                          tuning_words::Choices(field.form) + ", not '" + value + "'"};
  }
  return static_cast<std::uint32_t>(*word);
}

std::uint32_t Language(const std::string& field, const std::string& value) {
  const std::optional<std::int64_t> number = ParseNumber(value, 0, 0xFFF);
  if (!number) throw InvalidArgument{field + " takes a number from 0 to 4095, not '" + value + "'"};
  return static_cast<std::uint32_t>(*number);
}

/// Makes the count at least `entry`; entries that were not counted start empty.
void Grow(Channel& channel, std::size_t countOffset, std::size_t entry) {
  BYTE* count = channel.block.data() + countOffset;
  if (station_blocks::Fetch(count, 4) < entry) {
    station_blocks::Store(count, 4, static_cast<std::uint32_t>(entry));
  }
}

void Clear(Channel& channel, std::size_t offset, std::size_t size) {
  std::fill_n(channel.block.begin() + static_cast<std::ptrdiff_t>(offset), size, BYTE{0});
}

}  // namespace

FieldSetter::FieldSetter(InputSignalType signal, const NarrowText& narrow)
    : m_signal(signal), m_layout(LayoutOf(signal)), m_narrow(narrow) {}

const Field& FieldSetter::Find(const Assignment& assignment) const {
  // What the record answers has a name of its own beside that of the file.
  const RecordField* known = FindRecordField(assignment.field);
  const Source source =
      assignment.source != Source::Block || known == nullptr ? assignment.source : known->source;
  for (const auto& rows : {m_layout.channel, m_layout.elementStreams, m_layout.satelliteParams}) {
    for (const Field& row : rows) {
      const bool matches =
          source != Source::Block ? row.source == source : assignment.field == row.attribute;
      if (matches) return row;
    }
  }
  throw InvalidArgument{"channels of " + SignalTypeName(m_signal) + " have no " + assignment.field};
}

void FieldSetter::Set(Channel& channel, const Assignment& named) const {
  // As the value is shown: below its element, too.
  Assignment assignment = named;
  for (const std::string_view element : {"block.", "SatelliteParams."}) {
    if (assignment.field.starts_with(element)) assignment.field.erase(0, element.size());
  }
  const std::size_t bracket = assignment.field.find('[');
  if (bracket != std::string::npos) return SetEntry(channel, assignment, bracket);
  const Field& field = Find(assignment);
  if (field.use == Use::ReadOnly) throw NotKept(assignment.field, m_signal);
  if (field.source == Source::Index) throw InvalidArgument{"an index is changed by channels move"};
  if (field.source == Source::DisplayName) {
    channel.displayName = WideArgument(assignment.value);
    return;
  }
  if (field.source != Source::Block && field.source != Source::Name) {
    const std::optional<bool> mark =
        field.source == Source::Lock ? ParseMark(assignment.value) : std::nullopt;
    SetSourceValue(channel, field.source,
                   mark ? *mark : Number(assignment.field, assignment.value, 4));
  }
  if (field.width == 0) return;
  SetValue(channel.block.data() + field.offset, field, assignment);
  SetCount(channel, field, assignment.value);
}

void FieldSetter::SetValue(BYTE* place, const Field& field, const Assignment& assignment) const {
  switch (field.form) {
    case Form::Text:
    case Form::Base64:
      return SetText(place, field.width, TextLimit(field), assignment);
    case Form::Language:
      return station_blocks::StoreLanguage(place, Language(assignment.field, assignment.value));
    case Form::Number:
      break;
    default:
      return station_blocks::Store(place, field.width, Word(field, assignment.value));
  }
  station_blocks::Store(place, field.width,
                        Number(assignment.field, assignment.value, field.width));
}

void FieldSetter::SetText(BYTE* place, std::size_t width, std::size_t limit,
                          const Assignment& assignment) const {
  const std::string text =
      m_narrow.Require(WideArgument(assignment.value), limit, assignment.field);
  std::fill_n(place, width, BYTE{0});
  std::copy(text.begin(), text.end(), place);
}

// A count that is set drops the entries behind it, so that growing again finds them empty.
void FieldSetter::SetCount(Channel& channel, const Field& field, const std::string& value) const {
  const auto check = [&](std::size_t capacity) {
    const std::uint32_t count = station_blocks::Fetch(channel.block.data() + field.offset, 4);
    if (count <= capacity) return std::size_t{count};
    throw InvalidArgument{std::string(field.attribute) + " takes a number from 0 to " +
                          std::to_string(capacity) + ", not '" + value + "'"};
  };
  for (const StreamList& list : m_layout.lists) {
    if (list.countOffset != field.offset) continue;
    const std::size_t count = check(list.capacity);
    Clear(channel, list.offset + count * list.entrySize, (list.capacity - count) * list.entrySize);
  }
  const ComponentList* parts = m_layout.components;
  if (parts == nullptr || parts->countOffset != field.offset) return;
  const std::size_t count = check(parts->capacity);
  const std::size_t rest = parts->capacity - count;
  Clear(channel, parts->nameOffset + count * parts->nameWidth, rest * parts->nameWidth);
  Clear(channel, parts->typeOffset + count * 4, rest * 4);
}

// LIST[N].ATTRIBUTE
void FieldSetter::SetEntry(Channel& channel, const Assignment& assignment,
                           std::size_t bracket) const {
  const std::string& field = assignment.field;
  const std::string element = field.substr(0, bracket);
  const std::size_t end = field.find("].", bracket);
  const auto number = [&](std::size_t capacity) {
    const std::string text =
        end == std::string::npos ? "" : field.substr(bracket + 1, end - bracket - 1);
    const auto entry = ParseNumber(text, 1, static_cast<std::int64_t>(capacity));
    if (entry) return static_cast<std::size_t>(*entry);
    throw InvalidArgument{field + " is not " + element + "[1.." + std::to_string(capacity) +
                          "].ATTRIBUTE"};
  };
  for (const StreamList& list : m_layout.lists) {
    if (element != list.element) continue;
    const std::size_t entry = number(list.capacity);
    return SetListEntry(channel, list, entry, field.substr(end + 2), assignment);
  }
  if (m_layout.components != nullptr && element == "Components") {
    const std::size_t entry = number(m_layout.components->capacity);
    return SetComponent(channel, entry, field.substr(end + 2), assignment);
  }
  throw InvalidArgument{"channels of " + SignalTypeName(m_signal) + " have no list " + element};
}

void FieldSetter::SetListEntry(Channel& channel, const StreamList& list, std::size_t entry,
                               const std::string& attribute, const Assignment& assignment) const {
  if (list.use == Use::ReadOnly) throw NotKept(list.element, m_signal);
  const Field* field =
      station_blocks::FindField(station_blocks::EntryFields(list.entrySize), attribute);
  if (field == nullptr) {
    throw InvalidArgument{std::string(list.element) + " has no " + attribute};
  }
  BYTE* place = channel.block.data() + list.offset + (entry - 1) * list.entrySize + field->offset;
  SetValue(place, *field, assignment);
  Grow(channel, list.countOffset, entry);
}

void FieldSetter::SetComponent(Channel& channel, std::size_t entry, const std::string& attribute,
                               const Assignment& assignment) const {
  const ComponentList& parts = *m_layout.components;
  BYTE* block = channel.block.data();
  if (attribute == "name") {
    SetText(block + parts.nameOffset + (entry - 1) * parts.nameWidth, parts.nameWidth,
            kComponentNameLimit, assignment);
  } else if (attribute == "type") {
    station_blocks::Store(block + parts.typeOffset + (entry - 1) * 4, 4,
                          Number(assignment.field, assignment.value, 4));
  } else {
    throw InvalidArgument{"Components has no " + attribute};
  }
  Grow(channel, parts.countOffset, entry);
}

}  // namespace zortunedex::kit

#include "kit/interchange/services/channel_builder.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/stored_form.h"
#include "kit/text/tuning_words.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Source;
using station_blocks::StreamList;

namespace interchange {
namespace {

/// Highest value of an attribute of that width; numbers of four bytes may also be negative.
std::int64_t Highest(std::size_t width) {
  return width == 1 ? UINT8_MAX : width == 2 ? UINT16_MAX : UINT32_MAX;
}

constexpr std::int64_t kHighestLanguage = 0xFFF;

}  // namespace

WideText ToWideAnyhow(std::string_view utf8) {
  WideText wide;
  while (!utf8.empty()) {
    const std::string_view before = utf8;
    if (utf::Next(utf8)) {
      wide += *utf::ToWide(before.substr(0, before.size() - utf8.size()));
    } else {
      wide.push_back(OLECHAR{utf::kReplacement});
      utf8.remove_prefix(1);
    }
  }
  return wide;
}

FittedText FitText(std::string_view utf8, std::size_t limit, bool isXml, const NarrowText& narrow) {
  // A character has a byte at least, in UTF-8 and in the code page.
  std::string_view head = utf8.substr(0, 4 * (limit + 1));
  WideText wide;
  for (const OLECHAR unit : ToWideAnyhow(head)) {
    if (unit != 0 && !(isXml && Unwritable(WideView(&unit, 1), false) &&
                       !utf::IsHighSurrogate(unit) && !utf::IsLowSurrogate(unit))) {
      wide.push_back(unit);
    }
  }
  std::string bytes = narrow.Replacing(wide);
  while (bytes.size() > limit) {
    wide.pop_back();
    if (!wide.empty() && utf::IsHighSurrogate(wide.back())) wide.pop_back();
    bytes = narrow.Replacing(wide);
  }
  FittedText fitted{bytes, narrow.ToWide(bytes)};
  fitted.changed = utf::FromWide(fitted.wide) != utf8;
  return fitted;
}

Channel Completed(const Channel& channel, const ListContext& context) {
  ComPtr<IChannelInfo> record;
  Require(context.database.List(context.signal)->CreateChannelInfo(record.Receive()),
          "a record cannot be made");
  WriteChannel(channel, context.signal, record.Get());
  Channel completed = ReadChannel(record.Get());
  completed.index = channel.index;
  return completed;
}

ChannelBuilder::ChannelBuilder(const ListContext& context, Losses& losses)
    : m_context(context), m_layout(LayoutOf(context.signal)), m_losses(losses) {}

void ChannelBuilder::Begin(const Place& place) {
  m_place = place;
  m_channel = EmptyChannel(m_layout);
}

Channel ChannelBuilder::Take() { return Completed(m_channel, m_context); }

void ChannelBuilder::Set(const Field& field, const FieldValue& value) {
  if (field.form == Form::Text || field.form == Form::Base64) {
    if (const auto* text = std::get_if<std::string>(&value)) return SetText(field, *text);
    return m_losses.Add(Code::ValueOutOfRange, field.attribute, m_place, value);
  }
  tuning_words::Of(field.form).empty() ? SetNumber(field, value) : SetWord(field, value);
}

void ChannelBuilder::SetText(const Field& field, const std::string& text) {
  const FittedText fitted =
      FitText(text, TextLimit(field), field.form == Form::Text, m_context.narrow);
  if (field.source == Source::DisplayName) {
    m_channel.displayName = fitted.wide;
  } else {
    std::ranges::copy(fitted.narrow, m_channel.block.begin() + field.offset);
  }
  if (fitted.changed) {
    m_losses.Add(Code::NameChanged, field.attribute, m_place, text, utf::FromWide(fitted.wide));
  }
}

void ChannelBuilder::SetWord(const Field& field, const FieldValue& value) {
  // The file has words alone: a number stands for the one that it is written as.
  std::optional<std::int32_t> word;
  if (const auto* text = std::get_if<std::string>(&value)) {
    word = tuning_words::Value(field.form, *text);
  } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
    const auto known = static_cast<std::int32_t>(*number);
    if (known == *number && tuning_words::Text(field.form, known) != nullptr) {
      word = tuning_words::AsRead(field.form, known);
    }
  } else {
    return m_losses.Add(Code::ValueOutOfRange, field.attribute, m_place, value);
  }
  if (!word) {
    return m_losses.Add(Code::WordLacking, field.attribute, m_place, value, std::string("NotSet"));
  }
  station_blocks::Store(m_channel.block.data() + field.offset, field.width,
                        static_cast<std::uint32_t>(*word));
}

void ChannelBuilder::SetNumber(const Field& field, const FieldValue& value) {
  const bool ofRecord = field.source != Source::Block;
  const std::size_t width = ofRecord ? 4 : field.width;
  BYTE number[4] = {};
  StoreNumber(number, width, field.attribute, value, field.form == Form::Language);
  const std::uint32_t stored = station_blocks::Fetch(number, width);
  if (ofRecord) SetSourceValue(m_channel, field.source, stored);
  if (field.width != 0) {
    station_blocks::Store(m_channel.block.data() + field.offset, field.width, stored);
  }
}

void ChannelBuilder::StoreNumber(BYTE* place, std::size_t width, const std::string& name,
                                 const FieldValue& value, bool isLanguage) {
  std::optional<std::int64_t> number;
  if (const auto* mark = std::get_if<bool>(&value)) number = *mark ? 1 : 0;
  if (const auto* given = std::get_if<std::int64_t>(&value)) number = *given;
  const std::int64_t lowest = width < 4 || isLanguage ? 0 : INT32_MIN;
  if (!number || *number < lowest || *number > (isLanguage ? kHighestLanguage : Highest(width))) {
    return m_losses.Add(Code::ValueOutOfRange, name, m_place, value);
  }
  const auto stored = static_cast<std::uint32_t>(*number);
  isLanguage ? station_blocks::StoreLanguage(place, stored)
             : station_blocks::Store(place, width, stored);
}

void ChannelBuilder::SetEntries(const Column& column, const std::vector<EntryValues>& entries,
                                std::size_t all) {
  const std::size_t capacity =
      column.list != nullptr ? column.list->capacity : column.components->capacity;
  const std::size_t count = std::min(entries.size(), capacity);
  for (std::size_t i = 0; i < count; ++i) SetEntry(column, i, entries[i]);
  if (all > capacity) {
    m_losses.Add(Code::StreamsDropped, column.name, m_place, static_cast<std::int64_t>(all),
                 static_cast<std::int64_t>(capacity));
  }
  SetCount(column, count, capacity);
}

/// A full list may have a higher count, which the file keeps.
void ChannelBuilder::SetCount(const Column& column, std::size_t count, std::size_t capacity) {
  const std::size_t offset =
      column.list != nullptr ? column.list->countOffset : column.components->countOffset;
  BYTE* stored = m_channel.block.data() + offset;
  const std::uint32_t given = station_blocks::Fetch(stored, 4);
  if (given == count || (count == capacity && given > count)) return;
  station_blocks::Store(stored, 4, static_cast<std::uint32_t>(count));
  for (const Field& row : m_layout.elementStreams) {
    if (row.offset != offset || given == 0) continue;
    m_losses.Add(Code::ValueOutOfRange, row.attribute, m_place,
                 std::int64_t{static_cast<std::int32_t>(given)}, static_cast<std::int64_t>(count));
  }
}

void ChannelBuilder::SetEntry(const Column& column, std::size_t i, const EntryValues& entry) {
  if (column.components != nullptr) return SetComponent(*column.components, i, entry);
  const StreamList& list = *column.list;
  BYTE* place = m_channel.block.data() + list.offset + i * list.entrySize;
  std::size_t value = 0;
  for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
    if (value == entry.size()) return;
    StoreNumber(place + field.offset, field.width, std::string(column.name) + "." + field.attribute,
                entry[value++], field.form == Form::Language);
  }
  if (value < entry.size()) m_losses.Add(Code::KeyUnknown, column.name, m_place, entry[value]);
}

void ChannelBuilder::SetComponent(const ComponentList& parts, std::size_t i,
                                  const EntryValues& entry) {
  BYTE* block = m_channel.block.data();
  if (const auto* text = entry.empty() ? nullptr : std::get_if<std::string>(&entry[0])) {
    const FittedText fitted = FitText(*text, kComponentNameLimit, true, m_context.narrow);
    std::ranges::copy(fitted.narrow, block + parts.nameOffset + i * parts.nameWidth);
    if (fitted.changed) {
      m_losses.Add(Code::NameChanged, "Components.name", m_place, *text,
                   utf::FromWide(fitted.wide));
    }
  }
  if (entry.size() < 2) return;
  StoreNumber(block + parts.typeOffset + i * 4, 4, "Components.type", entry[1], false);
  if (entry.size() > 2) m_losses.Add(Code::KeyUnknown, "Components", m_place, entry[2]);
}

}  // namespace interchange

}  // namespace zortunedex::kit

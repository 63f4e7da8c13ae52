#include "kit/merge/fields/values.h"

#include <algorithm>

#include "kit/model/channel_layout.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;

namespace merge {

Channel Whole(Channel channel, const Layout& layout) {
  if (channel.block.size() < layout.size) channel.block.resize(layout.size);
  return channel;
}

std::uint32_t NumberIn(const Channel& channel, const Field& row) {
  if (row.source != Source::Block) return SourceValue(channel, row.source);
  return station_blocks::Fetch(channel.block.data() + row.offset, row.width);
}

void SetNumber(Channel& channel, const Field& row, std::uint32_t value) {
  if (row.source != Source::Block) SetSourceValue(channel, row.source, value);
  if (row.width != 0) {
    station_blocks::Store(channel.block.data() + row.offset, row.width, value);
  }
}

bool IsText(const Field& row) { return row.form == Form::Text || row.form == Form::Base64; }

namespace {

std::string_view BytesOf(const Channel& channel, const Field& row) {
  return UpToZero(channel.block.data() + row.offset, row.width);
}

}  // namespace

bool IsSame(const Channel& a, const Channel& b, const Field& row) {
  if (row.source == Source::DisplayName) return a.displayName == b.displayName;
  if (row.source == Source::Name) return a.name == b.name;
  if (IsText(row)) return BytesOf(a, row) == BytesOf(b, row);
  return NumberIn(a, row) == NumberIn(b, row);
}

void Copy(const Channel& from, const Field& row, Channel& to) {
  if (row.source == Source::DisplayName) {
    to.displayName = from.displayName;
    return;
  }
  if (row.source == Source::Name) to.name = from.name;
  if (!IsText(row)) return SetNumber(to, row, NumberIn(from, row));
  std::copy_n(from.block.begin() + row.offset, row.width, to.block.begin() + row.offset);
}

std::size_t CountIn(const Channel& channel, std::size_t countOffset, std::size_t capacity) {
  return std::min<std::size_t>(station_blocks::Fetch(channel.block.data() + countOffset, 4),
                               capacity);
}

const BYTE* EntryIn(const Channel& channel, const StreamList& list, std::size_t entry) {
  return channel.block.data() + list.offset + entry * list.entrySize;
}

FieldValue ShownValue(const BYTE* place, const Field& row, const Utf8Of& utf8) {
  if (!IsText(row)) return ReadNumberValue(place, row);
  const std::string narrow(UpToZero(place, row.width));
  return utf8 ? utf8(narrow) : narrow;
}

FieldValue ShownValue(const Channel& channel, const Field& row, const Utf8Of& utf8) {
  if (row.source == Source::DisplayName) return utf::FromWide(channel.displayName);
  if (row.source == Source::Name) return utf::FromWide(channel.name);
  if (row.source == Source::Block) {
    return ShownValue(channel.block.data() + row.offset, row, utf8);
  }
  return std::int64_t{static_cast<std::int32_t>(SourceValue(channel, row.source))};
}

WideText FilledName(const Channel& channel, InputSignalType signal) {
  if (signal != InputSignalATSCAntenna && signal != InputSignalATSCCable) return channel.name;
  const Layout& layout = LayoutOf(signal);
  const auto number = [&](const char* attribute) {
    const Field& row = *station_blocks::FindField(layout.channel, attribute);
    return std::to_string(static_cast<std::int32_t>(NumberIn(channel, row)));
  };
  const std::string start = number("majorChannel") + "." + number("minorChannel") + " ";
  return WideText(start.begin(), start.end()) + channel.name;
}

}  // namespace merge

}  // namespace zortunedex::kit

#include "kit/interchange/services/file_units.h"

#include <limits>
#include <string>
#include <utility>

#include "kit/failure.h"
#include "kit/interchange/services/station_values.h"
#include "kit/model/channel_layout.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::interchange {

using station_blocks::Field;
using station_blocks::Source;

namespace {

constexpr const char* kFrequencies[] = {"freq",        "Frequency",    "freqOffset",
                                        "LNB_LowFreq", "LNB_HighFreq", "LNB_SwitchFreq"};
constexpr std::int64_t kThousand = 1'000;

bool IsSigned(const Field& field) { return field.source == Source::OffsetFrequency; }

std::int64_t NumberOf(const Channel& channel, const Field& field) {
  const std::uint32_t number =
      field.source != Source::Block
          ? SourceValue(channel, field.source)
          : station_blocks::Fetch(channel.block.data() + field.offset, field.width);
  return IsSigned(field) ? std::int64_t{static_cast<std::int32_t>(number)} : std::int64_t{number};
}

void SetNumber(Channel& channel, const Field& field, std::int64_t number) {
  const auto stored = static_cast<std::uint32_t>(number);
  if (field.source != Source::Block) SetSourceValue(channel, field.source, stored);
  if (field.width != 0) {
    station_blocks::Store(channel.block.data() + field.offset, field.width, stored);
  }
}

bool Fits(const Field& field, std::int64_t number) {
  if (IsSigned(field)) return number == static_cast<std::int32_t>(number);
  return number >= 0 && number <= std::numeric_limits<std::uint32_t>::max();
}

std::int64_t Thousandth(std::int64_t number) {
  return (number + (number < 0 ? -kThousand : kThousand) / 2) / kThousand;
}

/// Calls for the fields in other units, with true where the file's unit is the smaller one.
template <typename Take>
void ForFields(InputSignalType signal, FileUnit unit, Take take) {
  if (unit == FileUnit::Kilohertz) return;
  const bool isSmall = unit == FileUnit::Hertz;
  const station_blocks::Layout& layout = LayoutOf(signal);
  for (const char* attribute : kFrequencies) {
    if (const Field* field = FindAttribute(layout, attribute)) take(*field, isSmall);
  }
  const Field* rate = FindAttribute(layout, "symbolRate");
  if (rate != nullptr && isSmall) take(*rate, true);
}

}  // namespace

Channel FromFileUnit(Channel channel, InputSignalType signal, FileUnit unit) {
  ForFields(signal, unit, [&](const Field& field, bool isSmall) {
    const std::int64_t number = NumberOf(channel, field);
    const std::int64_t ours = isSmall ? Thousandth(number) : number * kThousand;
    if (!Fits(field, ours)) {
      throw Failure{E_INVALIDARG, "channel " + std::to_string(channel.index) + " has " +
                                      field.attribute + " " + std::to_string(number) +
                                      ", which is none in MHz"};
    }
    SetNumber(channel, field, ours);
  });
  return channel;
}

std::vector<Channel> FromFileUnit(std::vector<Channel> channels, InputSignalType signal,
                                  FileUnit unit) {
  for (Channel& channel : channels) channel = FromFileUnit(std::move(channel), signal, unit);
  return channels;
}

Channel ToFileUnit(Channel channel, InputSignalType signal, FileUnit unit, Losses& losses) {
  const Place place{channel.index, utf::FromWide(channel.displayName)};
  ForFields(signal, unit, [&](const Field& field, bool isSmall) {
    const std::int64_t number = NumberOf(channel, field);
    const std::int64_t files = isSmall ? number * kThousand : Thousandth(number);
    if (!Fits(field, files)) {
      losses.Add(Code::ValueOutOfRange, field.attribute, place, number, std::int64_t{0});
      return SetNumber(channel, field, 0);
    }
    if (!isSmall && files * kThousand != number) {
      losses.Add(Code::NumberRounded, field.attribute, place, number, files * kThousand);
    }
    SetNumber(channel, field, files);
  });
  return channel;
}

Channel ToFileUnit(const Channel& channel, const Channel& stored, InputSignalType signal,
                   FileUnit unit) {
  const Channel before = FromFileUnit(stored, signal, unit);
  Losses told;
  Channel made = ToFileUnit(channel, signal, unit, told);
  ForFields(signal, unit, [&](const Field& field, bool) {
    if (NumberOf(channel, field) == NumberOf(before, field)) {
      SetNumber(made, field, NumberOf(stored, field));
    }
  });
  return made;
}

}  // namespace zortunedex::kit::interchange

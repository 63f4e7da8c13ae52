#include "kit/model/field_value.h"

#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Source;

namespace {

using Kind = RecordField::Kind;

FieldValue Number(std::int64_t value) { return value; }
FieldValue Mark(BOOL value) { return value != 0; }
FieldValue Text(const WideText& value) { return utf::FromWide(value); }

FieldValue Service(const Channel& channel) {
  if (channel.serviceType == ServiceUnknown) return {};
  return ServiceTypeName(channel.serviceType);
}

constexpr RecordField kRecordFields[] = {
    {"index", Kind::Number, Source::Index, [](const Channel& c) { return Number(c.index); }},
    {"number", Kind::Number, Source::PhysicalChannel,
     [](const Channel& c) { return Number(c.number); }},
    {"name", Kind::Text, Source::Name, [](const Channel& c) { return Text(c.name); }},
    {"displayName", Kind::Text, Source::DisplayName,
     [](const Channel& c) { return Text(c.displayName); }},
    {"frequency", Kind::Number, Source::Frequency,
     [](const Channel& c) { return Number(c.frequency); }},
    {"offset", Kind::Number, Source::OffsetFrequency,
     [](const Channel& c) { return Number(c.offset); }},
    {"tsid", Kind::Number, Source::TransportStream,
     [](const Channel& c) { return Number(c.tsid); }},
    {"serviceType", Kind::Service, Source::Block, Service},
    {"favorite", Kind::Number, Source::Favorite,
     [](const Channel& c) { return Number(c.favorite); }},
    {"lock", Kind::Mark, Source::Lock, [](const Channel& c) { return Mark(c.lock); }},
    {"scrambled", Kind::Mark, Source::Block, [](const Channel& c) { return Mark(c.scrambled); }},
    {"mhp", Kind::Mark, Source::Block, [](const Channel& c) { return Mark(c.mhp); }},
};

}  // namespace

FieldValue ReadFieldValue(const BYTE* place, const Field& field, const NarrowText& narrow) {
  if (field.form == Form::Text || field.form == Form::Base64) {
    return Text(narrow.ToWide(UpToZero(place, field.width)));
  }
  return ReadNumberValue(place, field);
}

FieldValue ReadNumberValue(const BYTE* place, const Field& field) {
  if (field.form == Form::Language) return Number(station_blocks::FetchLanguage(place));
  const std::uint32_t value = station_blocks::Fetch(place, field.width);
  if (const char* word = tuning_words::Text(field.form, static_cast<std::int32_t>(value))) {
    return std::string(word);
  }
  return field.width < 4 ? Number(value) : Number(static_cast<std::int32_t>(value));
}

std::span<const RecordField> RecordFields() { return kRecordFields; }

const RecordField* FindRecordField(std::string_view name) {
  for (const RecordField& field : kRecordFields) {
    if (field.name == name) return &field;
  }
  return nullptr;
}

std::optional<bool> ParseMark(std::string_view text) {
  for (const char* word : {"yes", "true", "on", "1"}) {
    if (EqualIgnoringCase(word, text)) return true;
  }
  for (const char* word : {"no", "false", "off", "0"}) {
    if (EqualIgnoringCase(word, text)) return false;
  }
  return std::nullopt;
}

}  // namespace zortunedex::kit

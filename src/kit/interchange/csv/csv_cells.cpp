#include "kit/interchange/csv/csv_cells.h"

#include "kit/interchange/csv/csv_text.h"
#include "kit/interchange/text_parts.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Form;

namespace interchange::csv {
namespace {

constexpr std::string_view kRate = "FEC ";
/// More than any list has room for.
constexpr std::size_t kMostEntries = 64;
constexpr char kDigits[] = "0123456789ABCDEF";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char byte : text) {
    const auto value = static_cast<unsigned char>(byte);
    if (value > 0x20 && value != 0x7F && byte != '%' && byte != '|') {
      escaped += byte;
      continue;
    }
    escaped += {'%', kDigits[value >> 4], kDigits[value & 0xF]};
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    std::optional<std::int64_t> byte;
    if (text.front() == '%' && text.size() >= 3) {
      byte = ParseNumber("0x" + std::string(text.substr(1, 2)));
    }
    plain += byte ? static_cast<char>(*byte) : text.front();
    text.remove_prefix(byte ? 3 : 1);
  }
  return plain;
}

std::string PlainText(const FieldValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  return {};
}

/// A number, or the text that is none.
FieldValue NumberIn(std::string_view text) {
  const std::optional<std::int64_t> number = ParseNumber(text);
  if (number) return *number;
  return std::string(text);
}

EntryValues EntryIn(const Column& column, std::string_view text) {
  EntryValues values;
  if (column.components != nullptr) values.emplace_back(Unescaped(TakeUpTo('|', text)));
  // One more than any entry has tells that there are too many.
  const std::size_t most = EntryNames(column).size() + 1;
  while (!text.empty() && values.size() < most) {
    values.push_back(NumberIn(TakeUpTo('|', text)));
  }
  return values;
}

}  // namespace

std::string CellOf(const Field& field, const FieldValue& value) {
  const std::string text = PlainText(value);
  if (field.form == Form::FecRate && text.find('/') != std::string::npos) {
    return std::string(kRate) + text;
  }
  return std::holds_alternative<std::string>(value) ? Guarded(text) : text;
}

FieldValue ValueIn(const Field& field, std::string_view cell) {
  if (field.form == Form::Text || field.form == Form::Base64) return std::string(Unguarded(cell));
  if (field.form == Form::FecRate && cell.starts_with(kRate)) cell.remove_prefix(kRate.size());
  return NumberIn(cell);
}

std::string CellOf(const std::vector<EntryValues>& entries) {
  std::string cell;
  for (const EntryValues& entry : entries) {
    if (!cell.empty()) cell += ' ';
    const char* before = "";
    for (const FieldValue& value : entry) {
      const bool isText = std::holds_alternative<std::string>(value);
      cell += before + (isText ? Escaped(PlainText(value)) : PlainText(value));
      before = "|";
    }
  }
  return Guarded(cell);
}

Entries EntriesIn(const Column& column, std::string_view cell) {
  Entries entries;
  for (std::string_view rest = Unguarded(cell); !rest.empty();) {
    const std::string_view entry = TakeUpTo(' ', rest);
    if (entry.empty()) continue;
    if (entries.count++ < kMostEntries) entries.first.push_back(EntryIn(column, entry));
  }
  return entries;
}

}  // namespace interchange::csv

}  // namespace zortunedex::kit

#include "kit/text/tuning_words.h"

#include "kit/text/ascii.h"

namespace zortunedex::kit::tuning_words {
namespace {

using station_blocks::Form;

constexpr Word kPolarisations[] = {
    {-1, "NotSet"}, {1, "LinearH"}, {2, "LinearV"}, {3, "CircularL"}, {4, "CircularR"},
};

constexpr Word kFecRates[] = {
    {-1, "NotSet"}, {1, "1/2"}, {2, "2/3"},  {3, "3/4"}, {4, "3/5"},
    {5, "4/5"},     {6, "5/6"}, {7, "5/11"}, {8, "7/8"},
};

// Analogue frequency has a word that is written and never read: it is none of these.
constexpr Word kModulations[] = {
    {-1, "NotSet"}, {1, "16QAM"},
    {2, "32QAM"},   {3, "64QAM"},
    {4, "80QAM"},   {5, "96QAM"},
    {6, "112QAM"},  {7, "128QAM"},
    {8, "160QAM"},  {9, "192QAM"},
    {10, "224QAM"}, {11, "256QAM"},
    {12, "320QAM"}, {13, "384QAM"},
    {14, "448QAM"}, {15, "512QAM"},
    {16, "640QAM"}, {17, "768QAM"},
    {18, "896QAM"}, {19, "1024QAM"},
    {20, "QPSK"},   {21, "BPSK"},
    {22, "OQPSK"},  {23, "8VSB"},
    {24, "16VSB"},  {25, "ANALOG_AMPLITUDE"},
};

constexpr Word kInversions[] = {
    {-1, "NotSet"},
    {1, "automatic"},
    {2, "normal"},
    {3, "inverted"},
};

}  // namespace

std::span<const Word> Of(Form form) {
  switch (form) {
    case Form::Polarisation:
      return kPolarisations;
    case Form::FecRate:
      return kFecRates;
    case Form::Modulation:
      return kModulations;
    case Form::SpectralInversion:
      return kInversions;
    case Form::Number:
    case Form::Text:
    case Form::Base64:
    case Form::Language:
      break;
  }
  return {};
}

namespace {

/// Null where a value has none.
const Word* WordOf(Form form, std::int32_t value) {
  for (const Word& word : Of(form)) {
    if (word.value == value || (word.value == -1 && value == 0)) return &word;
  }
  return nullptr;
}

}  // namespace

std::optional<std::int32_t> Value(Form form, std::string_view text) {
  for (const Word& word : Of(form)) {
    if (EqualIgnoringCase(word.text, text)) return word.value;
  }
  return std::nullopt;
}

const char* Text(Form form, std::int32_t value) {
  const Word* word = WordOf(form, value);
  return word == nullptr ? nullptr : word->text;
}

// No two words of a form are the same.
std::int32_t AsRead(Form form, std::int32_t value) {
  const Word* word = WordOf(form, value);
  return word == nullptr ? 0 : word->value;
}

std::string Choices(Form form) {
  const std::span<const Word> words = Of(form);
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i != 0) list += i + 1 == words.size() ? " or " : ", ";
    list += words[i].text;
  }
  return list;
}

}  // namespace zortunedex::kit::tuning_words

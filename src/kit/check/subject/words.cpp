#include "kit/check/subject/words.h"

#include "kit/check/subject/lookups.h"
#include "kit/text/ascii.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit::check::words {
namespace {

using station_blocks::Form;

struct ReadAlone {
  Form form;
  std::string_view word;
  std::int32_t value;
};

/// Read beside the words that are written.
constexpr ReadAlone kReadAlone[] = {
    {Form::Polarisation, "Linearh", 1},
    {Form::Polarisation, "Linearv", 2},
    {Form::Polarisation, "Circularl", 3},
    {Form::Polarisation, "Circularr", 4},
    {Form::FecRate, "-1", -1},
    {Form::FecRate, "6/7", -1},
    {Form::Modulation, "-1", -1},
    {Form::Modulation, "BDA_MOD_ANALOG_FREQUENCY", 26},
    {Form::SpectralInversion, "-1", -1},
};

}  // namespace

std::optional<std::int32_t> Read(Form form, std::string_view word) {
  for (const tuning_words::Word& known : tuning_words::Of(form)) {
    if (IsCalled(word, known.text)) return known.value;
  }
  for (const ReadAlone& known : kReadAlone) {
    if (known.form == form && known.word == word) return known.value;
  }
  return std::nullopt;
}

const char* Meant(Form form, std::string_view word) {
  for (const tuning_words::Word& known : tuning_words::Of(form)) {
    if (EqualIgnoringCase(word, known.text)) return known.text;
  }
  return nullptr;
}

bool IsLost(Form form, std::string_view word) {
  return !Read(form, word) || (form == Form::FecRate && word == "6/7");
}

}  // namespace zortunedex::kit::check::words

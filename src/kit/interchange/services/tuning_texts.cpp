#include "kit/interchange/services/tuning_texts.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Form;

namespace interchange {
namespace {

using tuning_words::Word;

// What the file writes as NotSet.
constexpr Word kOtherRates[] = {
    {BDA_BCC_RATE_1_4, "1/4"}, {BDA_BCC_RATE_1_3, "1/3"}, {BDA_BCC_RATE_2_5, "2/5"},
    {BDA_BCC_RATE_6_7, "6/7"}, {BDA_BCC_RATE_8_9, "8/9"}, {BDA_BCC_RATE_9_10, "9/10"},
};
constexpr Word kOtherModulations[] = {
    {BDA_MOD_8PSK, "8PSK"},
    {BDA_MOD_16APSK, "16APSK"},
    {BDA_MOD_32APSK, "32APSK"},
};

std::string TextOf(Form form, std::int32_t value, std::span<const Word> others = {}) {
  if (const char* word = tuning_words::Text(form, value)) return word;
  const auto other = std::ranges::find(others, value, &Word::value);
  return other != others.end() ? other->text : std::to_string(value);
}

}  // namespace

std::string TextOf(Polarisation polarisation) { return TextOf(Form::Polarisation, polarisation); }
std::string TextOf(BinaryConvolutionCodeRate fec) {
  return TextOf(Form::FecRate, fec, kOtherRates);
}
std::string TextOf(ModulationType modulation) {
  return TextOf(Form::Modulation, modulation, kOtherModulations);
}
std::string TextOf(SpectralInversion inversion) {
  return TextOf(Form::SpectralInversion, inversion);
}

}  // namespace interchange

}  // namespace zortunedex::kit

#include "kit/interchange/enigma2/enigma2_words.h"

#include <algorithm>

#include "kit/interchange/text_parts.h"

namespace zortunedex::kit::interchange::enigma2 {
namespace {

constexpr InputSignalType kSignals[] = {InputSignalDVBSatellite, InputSignalDVBTerrestrial};

// Of two rows with one number or one value the first counts.
constexpr Number kFecRates[] = {
    {0, BDA_BCC_RATE_NOT_SET}, {1, BDA_BCC_RATE_1_2},  {2, BDA_BCC_RATE_2_3},
    {3, BDA_BCC_RATE_3_4},     {4, BDA_BCC_RATE_5_6},  {5, BDA_BCC_RATE_7_8},
    {6, BDA_BCC_RATE_8_9},     {7, BDA_BCC_RATE_3_5},  {8, BDA_BCC_RATE_4_5},
    {9, BDA_BCC_RATE_9_10},    {10, BDA_BCC_RATE_6_7}, {15, BDA_BCC_RATE_NOT_SET},
};
constexpr Number kModulations[] = {
    {0, BDA_MOD_NOT_SET}, {1, BDA_MOD_QPSK},   {2, BDA_MOD_8PSK},
    {3, BDA_MOD_16QAM},   {4, BDA_MOD_16APSK}, {5, BDA_MOD_32APSK},
};
constexpr Number kInversions[] = {
    {0, BDA_SPECTRAL_INVERSION_NORMAL},
    {1, BDA_SPECTRAL_INVERSION_INVERTED},
    {2, BDA_SPECTRAL_INVERSION_AUTOMATIC},
};
constexpr Number kBandwidths[] = {{0, 8}, {1, 7}, {2, 6}, {3, 0}, {4, 5}, {6, 10}};
constexpr Number kVideoTypes[] = {{0, 0x02}, {1, 0x1B}, {7, 0x24}};
constexpr Number kAudioTypes[] = {
    {1, 0x03}, {1, 0x04}, {4, 0x06}, {4, 0x81}, {4, 0x87}, {12, 0x11}, {14, 0x0F},
};

}  // namespace

std::span<const InputSignalType> Signals() { return kSignals; }
std::span<const Number> FecRates() { return kFecRates; }
std::span<const Number> Modulations() { return kModulations; }
std::span<const Number> Inversions() { return kInversions; }
std::span<const Number> Bandwidths() { return kBandwidths; }
std::span<const Number> VideoTypes() { return kVideoTypes; }
std::span<const Number> AudioTypes() { return kAudioTypes; }

std::optional<std::uint32_t> NumberOf(std::span<const Number> numbers, std::int32_t value) {
  const auto found = std::ranges::find(numbers, value, &Number::value);
  return found == numbers.end() ? std::nullopt : std::optional(found->number);
}

std::optional<std::int32_t> ValueOf(std::span<const Number> numbers, std::uint32_t number) {
  const auto found = std::ranges::find(numbers, number, &Number::number);
  return found == numbers.end() ? std::nullopt : std::optional(found->value);
}

std::string Hex(std::uint64_t number, std::size_t digits, bool capitals) {
  const char* const kDigits = capitals ? "0123456789ABCDEF" : "0123456789abcdef";
  std::string text;
  for (; number != 0; number >>= 4) text += kDigits[number & 0xF];
  if (text.size() < digits) text.append(digits - text.size(), '0');
  std::ranges::reverse(text);
  return text;
}

std::optional<std::uint32_t> ParseHex(std::string_view text, std::uint32_t highest) {
  const std::optional<std::uint64_t> value = DigitsOf(text, 16);
  if (!value || *value > highest) return std::nullopt;
  return static_cast<std::uint32_t>(*value);
}

}  // namespace zortunedex::kit::interchange::enigma2

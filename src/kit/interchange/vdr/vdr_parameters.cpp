#include "kit/interchange/vdr/vdr_parameters.h"

#include <algorithm>
#include <iterator>

#include "kit/interchange/text_parts.h"
#include "kit/interchange/vdr/vdr_words.h"

namespace zortunedex::kit::interchange::vdr {
namespace {

struct Parameter {
  char letter;
  const char* name;
  Code code;  ///< for who has no place for it
};

/// What no list has a place for, by delivery.
constexpr Parameter kOfSatellite[] = {
    {'N', "pilot", Code::SecondGenerationDropped},
    {'O', "rollOff", Code::SecondGenerationDropped},
    {'P', "streamId", Code::SecondGenerationDropped},
};
constexpr Parameter kOfTerrestrial[] = {
    {'C', "codeRateHigh", Code::NoPlace},
    {'D', "codeRateLow", Code::NoPlace},
    {'G', "guardInterval", Code::NoPlace},
    {'I', "spectralInversion", Code::NoPlace},
    {'M', "modulation", Code::NoPlace},
    {'P', "streamId", Code::SecondGenerationDropped},
    {'Q', "systemId", Code::SecondGenerationDropped},
    {'S', "system", Code::SecondGenerationDropped},
    {'T', "transmissionMode", Code::NoPlace},
    {'X', "misoMode", Code::SecondGenerationDropped},
    {'Y', "hierarchy", Code::NoPlace},
};
constexpr Parameter kOfAtsc[] = {
    {'M', "modulation", Code::NoPlace},
};

constexpr std::uint32_t kQpsk = 2;
constexpr std::uint32_t k8Vsb = 10;
/// The one of the first generation, 0 being another word for it.
constexpr std::uint32_t kUsualRollOff = 35;
constexpr std::uint32_t kHighestBandwidth = 10;

class Taker {
 public:
  Taker(const Place& place, Service& service, Losses& losses)
      : m_place(place), m_service(service), m_losses(losses) {}

  void Take(std::string_view text) {
    const bool isSatellite = m_service.delivery == InputSignalDVBSatellite;
    // Without a word on it the program has it found out.
    if (isSatellite) m_service.tuning.inversion = BDA_SPECTRAL_INVERSION_AUTOMATIC;
    while (!text.empty()) {
      char letter = text.front();
      if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
      text.remove_prefix(1);
      const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
      TakeOne(letter, DigitsOf(text.substr(0, digits)));
      text.remove_prefix(digits);
    }
    if (isSatellite) Finish();
  }

 private:
  void Lose(Code code, const char* name, std::uint64_t number, FieldValue became = {}) {
    m_losses.Add(code, name, m_place,
                 static_cast<std::int64_t>(std::min<std::uint64_t>(number, INT64_MAX)),
                 std::move(became));
  }

  void Ignore(char letter) {
    const bool isPrintable = letter > ' ' && letter < 0x7F;
    m_losses.Add(Code::KeyUnknown, "parameter", m_place,
                 isPrintable ? std::string(1, letter) : std::string("?"));
  }

  void TakeOne(char letter, std::optional<std::uint64_t> number) {
    switch (m_service.delivery) {
      case InputSignalDVBSatellite:
        return TakeOfSatellite(letter, number);
      case InputSignalDVBTerrestrial:
        if (letter == 'B' && number) return TakeBandwidth(*number);
        return LoseOne(kOfTerrestrial, letter, number);
      default:
        return LoseOne(kOfAtsc, letter, number);
    }
  }

  void TakeBandwidth(std::uint64_t megahertz) {
    if (megahertz == kAutomatic) return;
    // The only one in kHz.
    constexpr std::uint64_t kNarrow = 1'712;
    if (megahertz == kNarrow) return Lose(Code::NoPlace, "bandwidth", kNarrow * 1'000);
    if (megahertz > kHighestBandwidth) return Lose(Code::ValueOutOfRange, "bandwidth", megahertz);
    m_service.tuning.bandwidth = static_cast<std::uint32_t>(megahertz);
  }

  template <std::size_t size>
  void LoseOne(const Parameter (&known)[size], char letter, std::optional<std::uint64_t> number) {
    const auto found = std::ranges::find(known, letter, &Parameter::letter);
    if (found == std::end(known) || !number) return Ignore(letter);
    if (*number != kAutomatic && !IsUsual(letter, *number)) Lose(found->code, found->name, *number);
  }

  /// What the signal type says already.
  bool IsUsual(char letter, std::uint64_t number) const {
    if (letter == 'S') return number == 0;
    return m_service.delivery == InputSignalATSCAntenna && number == k8Vsb;
  }

  void TakeOfSatellite(char letter, std::optional<std::uint64_t> number) {
    const Polarisation polarisation = PolarisationOf(letter);
    if (polarisation != BDA_POLARISATION_NOT_SET) {
      m_service.tuning.polarisation = polarisation;
      return;
    }
    if (!number) return Ignore(letter);
    const auto value = static_cast<std::uint32_t>(std::min<std::uint64_t>(*number, UINT32_MAX));
    switch (letter) {
      case 'C':
        return TakeFec(value);
      case 'I':
        return TakeInversion(value);
      case 'M':
        m_modulation = value;
        return;
      case 'S':
        m_isSecond = value == 1;
        if (value > 1) Lose(Code::ValueOutOfRange, "system", value);
        return;
      case 'O':
        m_rollOff = value;
        return;
      default:
        return LoseOne(kOfSatellite, letter, number);
    }
  }

  void TakeFec(std::uint32_t number) {
    const std::optional<BinaryConvolutionCodeRate> fec = FecOf(number);
    if (!fec) return Lose(Code::WordLacking, "innerFECRate", number, std::string("NotSet"));
    m_service.tuning.fec = *fec;
  }

  void TakeInversion(std::uint32_t number) {
    if (number == kAutomatic) return;
    if (number > 1) return Lose(Code::ValueOutOfRange, "spectralInversion", number);
    m_service.tuning.inversion =
        number == 1 ? BDA_SPECTRAL_INVERSION_INVERTED : BDA_SPECTRAL_INVERSION_NORMAL;
  }

  /// Modulation and system belong together, in whichever order they stand.
  void Finish() {
    Tuning& tuning = m_service.tuning;
    tuning.system = m_isSecond ? System::Second : System::First;
    const std::optional<ModulationType> modulation = ModulationOf(m_modulation);
    if (modulation) {
      tuning.modulation = *modulation;
    } else {
      Lose(Code::WordLacking, "modulation", m_modulation, std::string("NotSet"));
    }
    // The list means second generation where no modulation is set.
    if (modulation == BDA_MOD_NOT_SET && !m_isSecond) {
      m_losses.Add(Code::SystemAssumed, "modulation", m_place, std::string("DVB-S, automatic"),
                   std::string("NotSet"));
    }
    const bool isUsual = !m_isSecond && (m_rollOff == 0 || m_rollOff == kUsualRollOff);
    if (m_rollOff != kAutomatic && !isUsual) {
      Lose(Code::SecondGenerationDropped, "rollOff", m_rollOff);
    }
  }

  const Place& m_place;
  Service& m_service;
  Losses& m_losses;
  std::uint32_t m_modulation = kQpsk;
  std::uint32_t m_rollOff = kAutomatic;
  bool m_isSecond = false;
};

}  // namespace

void TakeParameters(std::string_view text, const Place& place, Service& service, Losses& losses) {
  Taker(place, service, losses).Take(text);
}

}  // namespace zortunedex::kit::interchange::vdr

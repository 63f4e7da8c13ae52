#include "kit/interchange/languages.h"

#include <algorithm>
#include <array>

namespace zortunedex::kit::interchange {
namespace {

constexpr std::size_t kLetters = 3;

/// All codes of ISO 639-2, those for terms and those for bibliographies, in the order of the
/// alphabet.
constexpr std::string_view kLanguages =
    "aarabkaceachadaadyafaafhafrainakaakkalbalealgaltamhanganpapaaraarcargarmarnarpartarwasmast"
    "athausavaaveawaaymazebadbaibakbalbambanbaqbasbatbejbelbembenberbhobihbikbinbisblabntbodbos"
    "brabrebtkbuabugbulburbyncadcaicarcatcaucebcelceschachbchechgchichkchmchnchochpchrchuchvchy"
    "cmccnrcopcorcoscpecpfcppcrecrhcrpcsbcuscymczedakdandardaydeldendeudgrdindivdoidradsbduadum"
    "dutdyudzoefiegyekaellelxengenmepoesteuseweewofanfaofasfatfijfilfinfiufonfrafrefrmfrofrrfrs"
    "fryfulfurgaagaygbagemgeogergezgilglagleglgglvgmhgohgongorgotgrbgrcgregrngswgujgwihaihathau"
    "hawhebherhilhimhinhithmnhmohrvhsbhunhuphyeibaiboiceidoiiiijoikuileiloinaincindineinhipkira"
    "iroislitajavjbojpnjprjrbkaakabkackalkamkankarkaskatkaukawkazkbdkhakhikhmkhokikkinkirkmbkok"
    "komkonkorkoskpekrckrlkrokrukuakumkurkutladlahlamlaolatlavlezlimlinlitlollozltzlualubluglui"
    "lunluolusmacmadmagmahmaimakmalmanmaomapmarmasmaymdfmdrmenmgamicminmismkdmkhmlgmltmncmnimno"
    "mohmonmosmrimsamulmunmusmwlmwrmyamynmyvnahnainapnaunavnblndendondsnepnewnianicniunldnnonob"
    "nognonnornqonsonubnwcnyanymnynnyonziociojioriormosaossotaotopaapagpalpampanpappaupeoperphi"
    "phnplipolponporprapropusquerajraprarroarohromronrumrunruprussadsagsahsaisalsamsansassatscn"
    "scoselsemsgasgnshnsidsinsiositslaslksloslvsmasmesmismjsmnsmosmssnasndsnksogsomsonsotspasqi"
    "srdsrnsrpsrrssasswsuksunsussuxswaswesycsyrtahtaitamtatteltemtertettgktglthatibtigtirtivtkl"
    "tlhtlitmhtogtontpitsitsntsotuktumtupturtuttvltwityvudmugauigukrumbundurduzbvaivenvievolvot"
    "wakwalwarwaswelwenwlnwolxalxhoyaoyapyidyorypkzapzblzenzghzhazhozndzulzunzxxzza";
static_assert(kLanguages.size() == 506 * kLetters);

/// Which one is meant where codes share their bits; of the others the first by the alphabet.
constexpr std::string_view kPreferred = "bulcatceschidutheblatmacmaymisnorsrpturvie";

constexpr std::uint32_t Bits(std::string_view code) {
  std::uint32_t bits = 0;
  for (std::size_t i = kLetters; i-- > 0;) {
    bits = bits << 4 | (static_cast<unsigned char>(code[i]) & 0xFU);
  }
  return bits;
}

struct Entry {
  std::uint16_t place = 0;  ///< of the code's first letter, counted from 1
  bool shared = false;
};

constexpr std::array<Entry, 4096> MakeByBits() {
  std::array<Entry, 4096> table = {};
  for (std::size_t i = 0; i < kLanguages.size(); i += kLetters) {
    Entry& entry = table[Bits(kLanguages.substr(i, kLetters))];
    entry.shared = entry.place != 0;
    if (!entry.shared) entry.place = static_cast<std::uint16_t>(i + 1);
  }
  for (std::size_t i = 0; i < kPreferred.size(); i += kLetters) {
    const std::string_view code = kPreferred.substr(i, kLetters);
    for (std::size_t j = 0; j < kLanguages.size(); j += kLetters) {
      if (kLanguages.substr(j, kLetters) == code) {
        table[Bits(code)].place = static_cast<std::uint16_t>(j + 1);
      }
    }
  }
  return table;
}

constexpr std::array<Entry, 4096> kByBits = MakeByBits();

constexpr bool IsLetter(char letter) { return (letter | 0x20) >= 'a' && (letter | 0x20) <= 'z'; }

}  // namespace

std::uint32_t LanguageBits(std::string_view code) {
  const bool isCode = code.size() == kLetters && std::ranges::all_of(code, IsLetter);
  return isCode ? Bits(code) : 0;
}

std::optional<Language> LanguageOf(std::uint32_t bits) {
  if (bits == 0 || bits >= kByBits.size() || kByBits[bits].place == 0) return std::nullopt;
  return Language{kLanguages.substr(kByBits[bits].place - 1U, kLetters), kByBits[bits].shared};
}

}  // namespace zortunedex::kit::interchange

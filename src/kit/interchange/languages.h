// The languages of streams: codes of ISO 639-2 and the twelve bits that the channel file keeps.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zortunedex::kit::interchange {

/// The low four bits of each letter, the first in the lowest; 0 for what is no code of three
/// letters. Capitals count as small letters.
std::uint32_t LanguageBits(std::string_view code);

/// The language that the bits stand for. Several codes can share them: the most widely spoken of
/// the known ones is meant, else the first by the alphabet.
struct Language {
  std::string_view code;
  bool assumed = false;  ///< others share the bits
};
/// Nothing for 0 and for bits that no code has.
std::optional<Language> LanguageOf(std::uint32_t bits);

}  // namespace zortunedex::kit::interchange

#pragma once

#include <string_view>

namespace zortunedex::kit::markup {

struct Declaration {
  bool isSound = false;       ///< as XML wants it
  std::string_view encoding;  ///< as it stands there; empty when it is not told
};

/// Looks at an XML declaration, from "<?xml" up to and with "?>".
Declaration ReadDeclaration(std::string_view text);

/// An encoding of that name is read as it stands.
bool IsUtf8Name(std::string_view name);
/// Encodings of that name cannot say so in bytes of ASCII.
bool IsWideName(std::string_view name);

/// What stands in the place of a broken one.
inline constexpr std::string_view kSoundDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>";

}  // namespace zortunedex::kit::markup

// Details of the .reg format that reading and writing share.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace reg_text {

inline constexpr std::u16string_view kHeader = u"Windows Registry Editor Version 5.00";
inline constexpr std::u16string_view kOldHeader = u"REGEDIT4";

/// Names differ in case when this differs: Latin, Greek and Cyrillic capitals become small ones.
/// The language's own conversion would follow the host's locale.
std::u16string Fold(std::u16string_view name);

std::u16string_view Trim(std::u16string_view text);

/// "..." with quotes and backslashes escaped.
std::u16string Quote(std::u16string_view text);

/// True when quotes cannot hold the text: it has a control character.
bool NeedsHex(std::u16string_view text);

/// "hex(1):", "hex(2):", ... and the bytes as two digits each.
std::u16string ToHex(std::u16string_view prefix, std::string_view bytes);

/// The bytes of a list of two-digit numbers; none when it is not one.
std::optional<std::string> FromHex(std::u16string_view digits);

/// UTF-16LE bytes of a text and back; an odd last byte is dropped.
std::string ToBytes(std::u16string_view text);
std::u16string FromBytes(std::string_view bytes);

}  // namespace reg_text

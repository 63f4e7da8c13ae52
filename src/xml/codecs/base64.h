#pragma once

#include <cstddef>

#include "platform/com.h"

/// Characters that `length` bytes need, the terminator included.
constexpr std::size_t Base64EncodedSize(std::size_t length) { return (length + 2) / 3 * 4 + 1; }

/// Bytes that `length` characters may need, the terminator included.
constexpr std::size_t Base64DecodedSize(std::size_t length) { return (length + 3) / 4 * 3 + 1; }

/// Standard alphabet, "=" padding, no line breaks. Writes Base64EncodedSize(length) characters with
/// the terminator and answers how many stand before it; 0 for a length below 1 or a null pointer,
/// and then nothing is written.
LONG Base64Encode(const BYTE* source, LONG length, char* target);

/// Reads groups of four characters; CR and LF are skipped, "=" ends its group, other characters are
/// not checked and count as zero bits. Writes the bytes and a zero byte, at most
/// Base64DecodedSize(length) in all, and answers the number of bytes; 0 as above.
LONG Base64Decode(const char* source, LONG length, BYTE* target);

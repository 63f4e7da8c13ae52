// Conversions between wide and narrow text. Narrow text is in the ANSI code page: on Windows the
// system's own (and the thread's, where texts become wide); on Linux one process-wide code page,
// UTF-8 unless the host chose another with ZorTunedexSetCodePage.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace text {

/// Narrow text in the thread's ANSI code page as a new BSTR (empty text gives an empty BSTR, not a
/// null one). Bytes that the code page does not know become its replacement character. Raises
/// ComError when there is no memory.
Bstr FromNarrow(std::string_view narrow);

/// Wide text in the system's ANSI code page; characters outside it become its replacement
/// character. A zero unit inside the text comes out as a zero byte. Raises std::bad_alloc, or
/// ComError, when there is no memory; so does ToUtf8.
std::string ToNarrow(WideView wide);

/// Length in bytes of the longest beginning of `narrow` that has at most `limit` bytes and does not
/// end inside a character of the system's ANSI code page.
std::size_t CutLength(std::string_view narrow, std::size_t limit);

/// Copies as much of `narrow` as fits `size` bytes with the terminator, cut on a character
/// boundary. Bytes behind the terminator are left as they are. Nothing is written when `size` is 0.
void CopyCut(std::string_view narrow, char* buffer, std::size_t size);

/// UTF-8 with U+FFFD for lone surrogates.
std::string ToUtf8(WideView wide);

/// Wide text of UTF-8, U+FFFD for what is not well-formed. Raises ComError when there is no memory.
Bstr FromUtf8(std::string_view utf8);

/// Whole-text, case-sensitive comparison; null equals empty. Windows compares as the user's default
/// locale does (VarBstrCmp), Linux code unit by code unit.
bool Equal(BSTR a, BSTR b);

/// The same comparison of a narrow text (ANSI code page) with a plain ASCII word.
bool EqualsWord(std::string_view narrow, std::string_view word);

/// The decimal rule of the files: leading white space skipped, an optional sign, digits up to the
/// first other character; 0 when there are none. Values beyond 32 bits wrap.
std::int32_t ToInt(std::string_view decimal);

}  // namespace text

#include "platform/text.h"

#include <algorithm>

#include "platform/windows/code_page.h"

namespace text {
namespace {

bool IsSpace(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

}  // namespace

// Texts become wide by the thread's code page and narrow by the system's: the two differ on
// purpose.
Bstr FromNarrow(std::string_view narrow) { return code_page::Widen(CP_THREAD_ACP, narrow); }

std::string ToNarrow(WideView wide) { return code_page::Narrow(CP_ACP, wide); }

std::size_t CutLength(std::string_view narrow, std::size_t limit) {
  return code_page::CutLength(GetACP(), narrow, limit);
}

void CopyCut(std::string_view narrow, char* buffer, std::size_t size) {
  if (size == 0) return;
  const std::size_t length = CutLength(narrow, size - 1);
  std::copy_n(narrow.begin(), length, buffer);
  buffer[length] = '\0';
}

std::string ToUtf8(WideView wide) { return code_page::Narrow(CP_UTF8, wide); }

Bstr FromUtf8(std::string_view utf8) { return code_page::Widen(CP_UTF8, utf8); }

bool Equal(BSTR a, BSTR b) {
  return VarBstrCmp(a, b, LOCALE_USER_DEFAULT, 0) == static_cast<HRESULT>(VARCMP_EQ);
}

bool EqualsWord(std::string_view narrow, const char* word) {
  return Equal(FromNarrow(narrow).Get(), FromNarrow(word).Get());
}

std::int32_t ToInt(std::string_view decimal) {
  auto next = std::find_if_not(decimal.begin(), decimal.end(), IsSpace);
  const bool isNegative = next != decimal.end() && *next == '-';
  if (next != decimal.end() && (*next == '-' || *next == '+')) ++next;
  std::uint32_t value = 0;
  for (; next != decimal.end() && *next >= '0' && *next <= '9'; ++next) {
    value = value * 10 + static_cast<std::uint32_t>(*next - '0');
  }
  return static_cast<std::int32_t>(isNegative ? 0 - value : value);
}

}  // namespace text

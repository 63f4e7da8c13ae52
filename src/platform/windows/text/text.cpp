#include "platform/text.h"

#include <algorithm>

#include "platform/windows/text/code_page.h"

namespace text {

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

bool EqualsWord(std::string_view narrow, std::string_view word) {
  return Equal(FromNarrow(narrow).Get(), FromNarrow(word).Get());
}

}  // namespace text

#include "platform/stated_page.h"

#include "platform/windows/text/code_page.h"

namespace stated_page {

// A code without a character reads as the page's own mark, which is not U+FFFD everywhere.
Bstr Widen(UINT page, std::string_view code) {
  Bstr wide = code_page::Widen(page, code);
  CPINFOEXW info{};
  GetCPInfoExW(page, 0, &info);
  const WideView mark(&info.UnicodeDefaultChar, 1);
  return wide.View() == mark && Narrow(page, mark) != code ? Bstr(L"\uFFFD") : std::move(wide);
}

std::string Narrow(UINT page, WideView wide) { return code_page::Narrow(page, wide); }

}  // namespace stated_page

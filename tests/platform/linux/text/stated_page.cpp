#include "platform/stated_page.h"

#include "platform/text.h"
#include "support/linux/code_page_scope.h"

namespace stated_page {

Bstr Widen(UINT page, std::string_view narrow) {
  const CodePageScope scope(page);
  return text::FromNarrow(narrow);
}

std::string Narrow(UINT page, WideView wide) {
  const CodePageScope scope(page);
  return text::ToNarrow(wide);
}

}  // namespace stated_page

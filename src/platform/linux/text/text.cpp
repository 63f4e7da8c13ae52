#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/lack_of_memory.h"
#include "platform/linux/text/code_page.h"
#include "platform/linux/text/utf8.h"

namespace text {
namespace {

bool IsAscii(std::string_view narrow) {
  unsigned all = 0;
  for (const char byte : narrow) all |= static_cast<unsigned char>(byte);
  return all < 0x80;
}

bool IsAscii(WideView wide) {
  unsigned all = 0;
  for (const OLECHAR unit : wide) all |= unit;
  return all < 0x80;
}

Bstr FromAscii(std::string_view ascii) {
  if (ascii.size() > std::numeric_limits<UINT>::max()) throw ComError(E_OUTOFMEMORY);
  const BSTR wide = SysAllocStringLen(nullptr, static_cast<UINT>(ascii.size()));
  if (wide == nullptr) throw ComError(E_OUTOFMEMORY);
  std::copy(ascii.begin(), ascii.end(), wide);
  return Bstr::Attach(wide);
}

Bstr FromBytes(const CodePage* page, std::string_view narrow) {
  if (IsAscii(narrow)) return FromAscii(narrow);
  const std::u16string wide =
      RaisingComError([=] { return page ? page->Decode(narrow) : utf8::ToWide(narrow); });
  if (wide.size() > std::numeric_limits<UINT>::max()) throw ComError(E_OUTOFMEMORY);
  return Bstr(wide);
}

std::string ToBytes(const CodePage* page, WideView wide) {
  if (IsAscii(wide)) {
    std::string ascii(wide.size(), '\0');
    std::transform(wide.begin(), wide.end(), ascii.begin(),
                   [](OLECHAR unit) { return static_cast<char>(unit); });
    return ascii;
  }
  return page ? page->Encode(wide) : utf8::FromWide(wide);
}

WideView ViewOf(BSTR text) { return {text ? text : u"", SysStringLen(text)}; }

}  // namespace

Bstr FromNarrow(std::string_view narrow) { return FromBytes(CodePage::Current(), narrow); }

std::string ToNarrow(WideView wide) { return ToBytes(CodePage::Current(), wide); }

std::size_t CutLength(std::string_view narrow, std::size_t limit) {
  const CodePage* page = CodePage::Current();
  return page ? page->CutLength(narrow, limit) : utf8::CutLength(narrow, limit);
}

void CopyCut(std::string_view narrow, char* buffer, std::size_t size) {
  if (size == 0) return;
  const std::size_t length = CutLength(narrow, size - 1);
  std::copy_n(narrow.begin(), length, buffer);
  buffer[length] = '\0';
}

std::string ToUtf8(WideView wide) { return ToBytes(nullptr, wide); }

Bstr FromUtf8(std::string_view utf8) { return FromBytes(nullptr, utf8); }

bool Equal(BSTR a, BSTR b) { return ViewOf(a) == ViewOf(b); }

bool EqualsWord(std::string_view narrow, std::string_view word) { return narrow == word; }

}  // namespace text

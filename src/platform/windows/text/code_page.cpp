#include "platform/windows/text/code_page.h"

#include <limits>

namespace code_page {
namespace {

int CheckedLength(std::size_t length) {
  if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw ComError(E_OUTOFMEMORY);
  }
  return static_cast<int>(length);
}

// Length of the character that a UTF-8 lead byte announces; 1 for what is no lead byte.
std::size_t Utf8Length(unsigned char lead) {
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  if (lead >= 0xE0) return lead < 0xF0 ? 3 : 1;
  return lead >= 0xC2 ? 2 : 1;
}

// `limit` lies inside the text.
std::size_t CutUtf8(std::string_view narrow, std::size_t limit) {
  const auto byteAt = [narrow](std::size_t i) { return static_cast<unsigned char>(narrow[i]); };
  const auto isTrail = [&](std::size_t i) { return (byteAt(i) & 0xC0) == 0x80; };
  if (!isTrail(limit)) return limit;
  std::size_t lead = limit;
  while (lead > 0 && limit - lead < 3 && isTrail(lead)) --lead;
  return Utf8Length(byteAt(lead)) > limit - lead ? lead : limit;
}

// `limit` lies inside the text. A zero is no second byte.
std::size_t CutDoubleByte(UINT codePage, std::string_view narrow, std::size_t limit) {
  std::size_t length = 0;
  while (length < limit) {
    const bool isLead = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(narrow[length])) != 0;
    const std::size_t step = isLead && narrow[length + 1] != 0 ? 2 : 1;
    if (length + step > limit) break;
    length += step;
  }
  return length;
}

}  // namespace

Bstr Widen(UINT codePage, std::string_view narrow) {
  const int length = CheckedLength(narrow.size());
  const int units =
      length == 0 ? 0 : MultiByteToWideChar(codePage, 0, narrow.data(), length, nullptr, 0);
  const BSTR wide = SysAllocStringLen(nullptr, static_cast<UINT>(units));
  if (wide == nullptr) throw ComError(E_OUTOFMEMORY);
  if (units > 0) MultiByteToWideChar(codePage, 0, narrow.data(), length, wide, units);
  return Bstr::Attach(wide);
}

std::string Narrow(UINT codePage, WideView wide) {
  if (wide.empty()) return {};
  const int units = CheckedLength(wide.size());
  const int length =
      WideCharToMultiByte(codePage, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), units, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

std::size_t CutLength(UINT codePage, std::string_view narrow, std::size_t limit) {
  if (narrow.size() <= limit) return narrow.size();
  CPINFO info{};
  if (codePage == CP_UTF8) return CutUtf8(narrow, limit);
  if (GetCPInfo(codePage, &info) && info.MaxCharSize > 1) {
    return CutDoubleByte(codePage, narrow, limit);
  }
  return limit;
}

}  // namespace code_page

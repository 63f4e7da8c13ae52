#include "platform/windows/files/system_message.h"

std::string SystemMessage(DWORD error) {
  constexpr DWORD kForm =
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  wchar_t wide[512];
  const DWORD length = FormatMessageW(kForm, nullptr, error, 0, wide, 512, nullptr);
  char utf8[4 * 512];
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(length), utf8,
                                       sizeof(utf8), nullptr, nullptr);
  std::string text(utf8, length == 0 || size < 0 ? 0 : static_cast<std::size_t>(size));
  while (!text.empty() && (text.back() == ' ' || text.back() == '.')) text.pop_back();
  return text.empty() ? "error " + std::to_string(error) : text;
}

#include "platform/linux/text/iconv_converter.h"

#include <cerrno>

IconvConverter::~IconvConverter() {
  if (IsOpen()) iconv_close(m_handle);
}

std::size_t IconvConverter::Convert(std::string_view character, char* bytes, std::size_t room) {
  iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
  char* in = const_cast<char*>(character.data());  // iconv only reads there
  std::size_t length = character.size();
  std::size_t left = room;
  if (iconv(m_handle, &in, &length, &bytes, &left) != 0) return 0;
  // Pages with combining characters hold the last one back until they are told that no more comes.
  if (iconv(m_handle, nullptr, nullptr, &bytes, &left) != 0) return 0;
  return room - left;
}

bool IconvConverter::ConvertAll(std::string_view text, std::string& converted) {
  iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
  char* in = const_cast<char*>(text.data());  // iconv only reads there
  std::size_t length = text.size();
  // The call that says that no more comes gets out what was held back.
  for (bool isEnd = false;; isEnd = length == 0) {
    char bytes[4096];
    char* out = bytes;
    std::size_t left = sizeof(bytes);
    const std::size_t result =
        iconv(m_handle, isEnd ? nullptr : &in, isEnd ? nullptr : &length, &out, &left);
    const bool isFull = result == static_cast<std::size_t>(-1) && errno == E2BIG;
    converted.append(bytes, sizeof(bytes) - left);
    if (result != 0 && !isFull) return false;
    if (isEnd && !isFull) return true;
  }
}

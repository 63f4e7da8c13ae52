#include "platform/linux/iconv_converter.h"

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

#pragma once

#include <iconv.h>

#include <cstddef>
#include <string>
#include <string_view>

/// Converts between two of iconv's encodings.
class IconvConverter {
 public:
  IconvConverter(const char* to, const char* from) : m_handle(iconv_open(to, from)) {}
  IconvConverter(const IconvConverter&) = delete;
  IconvConverter& operator=(const IconvConverter&) = delete;
  ~IconvConverter();

  /// False when iconv lacks one of the encodings.
  bool IsOpen() const {
    return m_handle != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr): POSIX
  }

  /// Bytes written; 0 when the character does not exist or needs more than `room` bytes.
  std::size_t Convert(std::string_view character, char* bytes, std::size_t room);

  /// Appends a whole text. False when a character does not exist or the last one is cut.
  bool ConvertAll(std::string_view text, std::string& converted);

 private:
  iconv_t m_handle;
};

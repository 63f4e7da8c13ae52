#pragma once

#include <string_view>

#include "platform/com.h"

// There is no __uuidof here; what Windows relies on is checked.
#define ZORTUNEDEX_UUID(key, type, prefix, text) \
  static_assert(interface_uuid::Names(text, prefix##_##type), #type)

namespace interface_uuid {

/// The value of hexadecimal digits; a letter is a capital.
constexpr std::uint64_t Value(std::string_view digits) {
  std::uint64_t value = 0;
  for (const char c : digits) value = value << 4 | static_cast<unsigned>(c - (c < 'A' ? '0' : '7'));
  return value;
}

/// True for "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX" with the identifier's digits.
constexpr bool Names(std::string_view text, const GUID& identifier) {
  if (text.size() != 36) return false;
  for (const std::size_t dash : {8U, 13U, 18U, 23U}) {
    if (text[dash] != '-') return false;
  }
  std::uint64_t end = 0;
  for (const std::uint8_t byte : identifier.Data4) end = end << 8 | byte;
  return Value(text.substr(0, 8)) == identifier.Data1 &&
         Value(text.substr(9, 4)) == identifier.Data2 &&
         Value(text.substr(14, 4)) == identifier.Data3 &&
         (Value(text.substr(19, 4)) << 48 | Value(text.substr(24))) == end;
}

}  // namespace interface_uuid

#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/bstr.h"

/// Values from the bytes of one input; zeros and empty texts when they are used up.
class Input {
 public:
  Input(const BYTE* data, std::size_t size) : m_data(data), m_size(size) {}

  bool IsEmpty() const { return m_size == 0; }
  BYTE Byte() {
    const std::vector<BYTE> byte = Bytes(1);
    return byte.empty() ? BYTE{0} : byte[0];
  }
  /// 0 to `below` - 1.
  UINT Below(UINT below) { return Byte() % below; }
  UINT Number() {
    UINT number = 0;
    const std::vector<BYTE> bytes = Bytes(sizeof(number));
    if (!bytes.empty()) std::memcpy(&number, bytes.data(), bytes.size());
    return number;
  }
  /// A buffer of its own, so that reading beyond it is seen; up to `count` bytes.
  std::vector<BYTE> Bytes(std::size_t count) {
    const std::size_t taken = std::min(count, m_size);
    std::vector<BYTE> bytes(m_data, m_data + taken);
    m_data += taken;
    m_size -= taken;
    return bytes;
  }
  /// Any units at all, zeros and lone surrogates among them.
  Bstr Text(std::size_t units) {
    const std::vector<BYTE> bytes = Bytes(units * sizeof(OLECHAR));
    std::u16string text(bytes.size() / sizeof(OLECHAR), u'\0');
    if (!text.empty()) std::memcpy(text.data(), bytes.data(), text.size() * sizeof(OLECHAR));
    return Bstr(text);
  }

 private:
  const BYTE* m_data;
  std::size_t m_size;
};

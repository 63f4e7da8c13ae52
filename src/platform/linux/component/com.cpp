// BSTR and task memory.
#include "platform/com.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

// Eight bytes in front keep the text aligned; the length stands in the last four.
constexpr std::size_t kHeader = 8;

char* BlockOf(BSTR text) { return reinterpret_cast<char*>(text) - kHeader; }

}  // namespace

BSTR SysAllocStringByteLen(const char* text, UINT length) {
  // A zero unit ends the text, and a zero byte in front of it the odd half unit.
  char* block = static_cast<char*>(std::malloc(kHeader + std::size_t{length} + 3));
  if (block == nullptr) return nullptr;
  char* data = block + kHeader;
  std::memcpy(data - sizeof(length), &length, sizeof(length));
  if (text != nullptr) {
    std::memcpy(data, text, length);
    std::memset(data + length, 0, 3);
  } else {
    std::memset(data, 0, std::size_t{length} + 3);
  }
  return reinterpret_cast<BSTR>(data);
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  constexpr UINT kLongest = std::numeric_limits<UINT>::max() / sizeof(OLECHAR);
  if (length > kLongest) return nullptr;
  return SysAllocStringByteLen(reinterpret_cast<const char*>(text),
                               length * static_cast<UINT>(sizeof(OLECHAR)));
}

BSTR SysAllocString(const OLECHAR* text) {
  if (text == nullptr) return nullptr;
  std::size_t length = 0;
  while (text[length] != 0) ++length;
  if (length > std::numeric_limits<UINT>::max()) return nullptr;
  return SysAllocStringLen(text, static_cast<UINT>(length));
}

void SysFreeString(BSTR text) {
  if (text != nullptr) std::free(BlockOf(text));
}

UINT SysStringByteLen(BSTR text) {
  UINT length = 0;
  if (text != nullptr) {
    std::memcpy(&length, reinterpret_cast<char*>(text) - sizeof(length), sizeof(length));
  }
  return length;
}

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR)); }

void* CoTaskMemAlloc(std::size_t size) { return std::malloc(size); }

void CoTaskMemFree(void* memory) { std::free(memory); }

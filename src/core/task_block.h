#pragma once

#include <cstring>
#include <new>
#include <utility>

#include "platform/com.h"

/// Owns one zeroed block of task memory, such as a station block.
class TaskBlock {
 public:
  TaskBlock() = default;
  /// Raises lack of memory.
  explicit TaskBlock(std::size_t size) : m_bytes(static_cast<BYTE*>(CoTaskMemAlloc(size))) {
    if (m_bytes == nullptr) throw std::bad_alloc();
    std::memset(m_bytes, 0, size);
  }
  TaskBlock(TaskBlock&& other) noexcept : m_bytes(std::exchange(other.m_bytes, nullptr)) {}
  TaskBlock& operator=(TaskBlock&& other) noexcept {
    std::swap(m_bytes, other.m_bytes);
    return *this;
  }
  ~TaskBlock() { CoTaskMemFree(m_bytes); }

  /// Takes over a block that the caller owns.
  static TaskBlock Attach(BYTE* bytes) {
    TaskBlock result;
    result.m_bytes = bytes;
    return result;
  }

  BYTE* Get() const { return m_bytes; }
  explicit operator bool() const { return m_bytes != nullptr; }
  /// Gives the block to the caller, who frees it with CoTaskMemFree.
  BYTE* Release() { return std::exchange(m_bytes, nullptr); }

 private:
  BYTE* m_bytes = nullptr;
};

#pragma once

#include <utility>

#include "platform/com.h"

/// Owns one reference on a COM object.
template <typename T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  /// Adds a reference of its own.
  explicit ComPtr(T* object) : m_object(object) {
    if (m_object) m_object->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.m_object) {}
  ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }
  ~ComPtr() { Reset(); }

  /// Takes over the reference that the caller holds.
  static ComPtr Attach(T* object) {
    ComPtr result;
    result.m_object = object;
    return result;
  }

  T* Get() const { return m_object; }
  T* operator->() const { return m_object; }
  explicit operator bool() const { return m_object != nullptr; }

  /// Gives the reference to the caller.
  T* Detach() { return std::exchange(m_object, nullptr); }
  void Reset() {
    if (T* old = Detach()) old->Release();
  }
  /// Empties itself and is the place where a getter stores its reference.
  T** Receive() {
    Reset();
    return &m_object;
  }

 private:
  T* m_object = nullptr;
};

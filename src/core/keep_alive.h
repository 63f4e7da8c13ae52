#pragma once

#include "platform/com.h"
#include "platform/com_ptr.h"

/// Holds an object while one of its own methods runs: what the method calls may release the last
/// reference of the outside. The object then goes at the end of the method.
class KeepAlive {
 public:
  explicit KeepAlive(IUnknown* object);
  KeepAlive(const KeepAlive&) = delete;
  KeepAlive& operator=(const KeepAlive&) = delete;
  ~KeepAlive();

 private:
  ComPtr<IUnknown> m_object;
};

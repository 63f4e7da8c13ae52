// Calls of a method by its place in an object's table of methods, as a host in C makes them.
#pragma once

#include <cstddef>
#include <cstring>

#include "platform/com.h"

/// Calls the method in slot `slot`; the three of IUnknown stand in 0 to 2. The arguments are passed
/// as the types they have here.
template <typename Result = HRESULT, typename... Arguments>
Result CallSlot(void* object, std::size_t slot, Arguments... arguments) {
  using Method = Result(STDMETHODCALLTYPE*)(void*, Arguments...);
  const void* table = nullptr;
  std::memcpy(&table, object, sizeof(table));
  Method method = nullptr;
  std::memcpy(&method, static_cast<const char*>(table) + slot * sizeof(method), sizeof(method));
  return method(object, arguments...);
}

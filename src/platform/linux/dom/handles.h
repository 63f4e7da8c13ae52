// What the handle classes have in common.
#pragma once

#include <algorithm>
#include <new>
#include <string_view>

#include "platform/com_error.h"
#include "platform/linux/tree/node.h"

namespace domtree {

/// The node behind a handle's pointer.
inline Node& NodeOf(IUnknown* node) { return *static_cast<Node*>(node); }

inline bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// Lack of memory leaves this library as ComError alone.
template <typename Work>
HRESULT Guarded(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw ComError(E_OUTOFMEMORY);
  }
}

}  // namespace domtree

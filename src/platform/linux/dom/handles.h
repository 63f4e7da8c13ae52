// What the handle classes have in common.
#pragma once

#include <algorithm>
#include <string_view>

#include "platform/linux/tree/node.h"

namespace domtree {

/// The node behind a handle's pointer.
inline Node& NodeOf(IUnknown* node) { return *static_cast<Node*>(node); }

inline bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace domtree

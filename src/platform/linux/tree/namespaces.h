#pragma once

#include <string_view>

#include "platform/linux/tree/node.h"

namespace domtree {

/// True for "xmlns" and "xmlns:...".
bool IsNamespaceDeclaration(std::string_view name);

/// True when every prefix of the element and its attributes is declared where the element stands,
/// and no two attributes are the same but for their prefixes. Nodes can be moved to where this does
/// not hold.
bool HasSoundPrefixes(const Node& element);

}  // namespace domtree

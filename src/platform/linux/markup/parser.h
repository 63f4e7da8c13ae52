#pragma once

#include "platform/linux/tree/store.h"

namespace domtree {

/// The tree of a file's bytes. Null when they are no well-formed document, or one with a document
/// type declaration, one that nests deeper than kDeepest, or one with more attributes in an element
/// or namespaces in force than anybody needs. Raises std::bad_alloc. For any number of threads.
NewStore Parse(FileBytes file);

}  // namespace domtree

#pragma once

#include "platform/linux/tree/store.h"

namespace domtree {

/// Where the parser gave up, both from 1 and columns in characters; 0 where it does not tell.
struct Place {
  unsigned line = 0;
  unsigned column = 0;
};

/// The tree of a file's bytes. Null when they are no well-formed document, or one with a document
/// type declaration, one that nests deeper than kDeepest, or one with more attributes in an element
/// or namespaces in force than anybody needs; `place` then says where. Raises std::bad_alloc. For
/// any number of threads.
NewStore Parse(FileBytes file, Place* place = nullptr);

}  // namespace domtree

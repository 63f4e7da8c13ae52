#pragma once

#include "platform/linux/dom_store.h"

namespace domtree {

/// Fills an empty store from its file's bytes. False when they are no well-formed document, or one
/// with a document type declaration, one that nests deeper than kDeepest, one with more attributes
/// in an element or namespaces in force than anybody needs, or one that memory does not suffice
/// for; the tree is then of no use. Never raises. For any number of threads.
bool Parse(Store& store);

}  // namespace domtree

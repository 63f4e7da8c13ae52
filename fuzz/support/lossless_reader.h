// What holds of a file that is read without losing a byte.
#pragma once

#include <string>
#include <vector>

#include "kit/xml/tree/document.h"
#include "platform/linux/tree/store.h"

namespace zortunedex::kit {

/// The tree of the library's own parser; null where that does not take the file.
domtree::NewStore LibrarysTree(const std::string& bytes);
/// Every damage but raw blanks is mended.
bool IsAllMended(const markup::Document& document);
/// Nothing is told of it but raw blanks.
bool IsSound(const markup::Document& document);
/// The parser of Linux takes a declaration whose parts are not set apart, which no other does.
bool MayHaveAttachedParts(const std::string& bytes);

void RequireAre(const std::vector<markup::Token>& tokens, const std::string& bytes);
void RequireSameTree(const markup::Document& a, const markup::Document& b);
/// Elements, attributes and values are those that the library's parser sees.
void RequireSameTree(const markup::Document& document, const domtree::Store& store);

}  // namespace zortunedex::kit

// What holds of a file that is read without losing a byte.
#pragma once

#include <string>
#include <vector>

#include "kit/xml/tree/document.h"

/// The library's own parser takes it.
bool LibraryReads(const std::string& bytes);
/// Every damage but raw blanks is mended.
bool IsAllMended(const markup::Document& document);
/// What is good XML is taken for raw markup: a mended tag may come to look like that.
bool SeesRawMarkup(const markup::Document& document);
/// The parser of Linux takes a declaration whose parts are not set apart, which no other does.
bool MayHaveAttachedParts(const std::string& bytes);

void RequireAre(const std::vector<markup::Token>& tokens, const std::string& bytes);
void RequireSameTree(const markup::Document& a, const markup::Document& b);

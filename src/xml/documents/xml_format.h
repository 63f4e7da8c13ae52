// The pre-formatted form of a document: one element a line, one tab a level, CR LF, attribute
// values exactly as they are, without escapes. Elements and attributes only: comments and texts end
// here.
#pragma once

#include <string>

#include "platform/dom.h"

namespace xml {

/// Appends the element and its subtree as UTF-8. Never escapes: a value with a quote, "<" or "&" is
/// written raw, which older readers of these files expect.
HRESULT FormatElement(const dom::Element& element, int level, std::string& text);

/// Replaces the file by the header line and `text`. E_FAIL, with the old file in place, when it
/// cannot be written or when `text` has more than two bytes for each of its UTF-16 units.
HRESULT WriteFormattedFile(const std::string& path, const std::string& text);

}  // namespace xml

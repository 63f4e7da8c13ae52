#pragma once

#include <string_view>

namespace dom {

/// True for a name without a prefix. All names of the files are ASCII.
bool IsName(std::string_view name);

/// True for a name, with a prefix or without.
bool IsQualifiedName(std::string_view name);

/// True for the chains of steps that the document seam takes (see platform/dom.h): "./A",
/// "./A/B[@x='1'][@y = '2']". Nothing else reaches the platform: Wine's path reader crashes on
/// malformed paths, and a path made of somebody's text must not become another question.
bool IsPath(std::string_view path);

}  // namespace dom

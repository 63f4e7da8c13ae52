// Edits that repairs are made of.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

using EditList = std::vector<markup::Edit>;

/// An attribute's value, escaped where it has to be.
EditList SetValue(const markup::Attribute& attribute, std::string_view value);
/// The same for one that may be missing: it is then appended to the tag.
EditList SetValue(const markup::Document& document, const markup::Element& element,
                  std::string_view attribute, std::string_view value);

/// Takes an element away with the white space in front of it.
markup::Edit Removal(const markup::Document& document, const markup::Element& element);

/// What stands between an element's tags.
markup::Span ContentOf(const markup::Element& element);

/// Puts text behind an element's content. An empty tag is opened and closed for it.
EditList Append(const markup::Document& document, const markup::Element& element,
                std::string_view text);

/// Bytes of a span with edits inside of it made.
std::string Rewritten(const markup::Document& document, markup::Span span, const EditList& edits);

/// The first elements' places get the texts of others: `order` says which element comes to the
/// place of the first one, the second one and so on, as it stands or with the edits inside of it.
EditList Reorder(const markup::Document& document, const std::vector<markup::Index>& elements,
                 const std::vector<markup::Index>& order, const std::vector<EditList>& inside);

}  // namespace zortunedex::kit::check

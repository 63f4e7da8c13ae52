// The library's own reading of the catalogue and the dishes beside the prediction.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/subject/code_page_text.h"

namespace zortunedex::kit::check {

/// ZT900: whether the library reads a catalogue, or the dishes, as predicted. It reads a copy of
/// the bytes, which it can read.
std::vector<Finding> CompareCatalogue(const markup::Document& document, std::string_view bytes,
                                      CodePageText& text);
std::vector<Finding> CompareDishes(const markup::Document& document, std::string_view bytes,
                                   CodePageText& text);

/// What is not as it was after findings of `before` were mended: nothing, or a sentence. Every
/// satellite, transponder and LNB type, or every assignment, that none of them is about has to be
/// there with all its values, in its place or order.
std::optional<std::string> WhatIsLostOfCatalogue(const markup::Document& before,
                                                 const std::vector<const Finding*>& mended,
                                                 const markup::Document& after, CodePageText& text);
std::optional<std::string> WhatIsLostOfDishes(const markup::Document& before,
                                              const std::vector<const Finding*>& mended,
                                              const markup::Document& after, CodePageText& text);

}  // namespace zortunedex::kit::check

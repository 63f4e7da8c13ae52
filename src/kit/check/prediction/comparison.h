// The library's own reading beside the prediction.
#pragma once

#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/prediction/library_lists.h"
#include "kit/check/subject/code_page_text.h"
#include "kit/check/subject/files.h"

namespace zortunedex::kit::check {

/// ZT900: whether the library reads a channel file, or the presets, as predicted. It reads a copy
/// of the bytes. Documents that it cannot read are not looked at.
std::vector<Finding> CompareChannels(const markup::Document& document, std::string_view bytes,
                                     const Database& database, CodePageText& text);
std::vector<Finding> ComparePresets(const markup::Document& document, std::string_view bytes,
                                    const Database& database, CodePageText& text);

/// The same for a document of the bytes that the lists are of. None of them may have been walked.
std::vector<Finding> CompareChannels(const markup::Document& document, LibraryLists& lists,
                                     const Database& database, CodePageText& text);

/// The same for the data file of any name.
std::vector<Finding> CompareFile(std::string_view name, const markup::Document& document,
                                 std::string_view bytes, const Database& database,
                                 CodePageText& text);

}  // namespace zortunedex::kit::check

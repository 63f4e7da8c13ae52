// The rules of the files beside the channel file. Each takes what else it has to know of the
// directory: null for a file that is missing or cannot be read.
#pragma once

#include "kit/check/findings/report.h"
#include "kit/check/subject/channel_tree.h"

namespace zortunedex::kit::check {

/// ZT200 to ZT205.
void CheckCatalogue(const markup::Document& document, Report& report);

/// ZT220 to ZT226.
void CheckDishes(const markup::Document& document, const markup::Document* catalogue,
                 const markup::Document* channels, Report& report);

/// ZT240 to ZT243.
void CheckAreas(const markup::Document& document, const ChannelTree& tree, Report& report);

/// Elements of a name that are never read, as the first one of them is: their content joins it. The
/// findings are at those.
void CheckSeconds(const markup::Document& document, markup::Index parent, std::string_view name,
                  const char* code, Report& report);

/// The number of an attribute, 0 where it is missing.
std::int32_t NumberOf(const markup::Document& document, markup::Index element,
                      std::string_view attribute);

}  // namespace zortunedex::kit::check

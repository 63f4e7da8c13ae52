// Takes the order of a playlist, or of an editor's list.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange::m3u {

/// The channels of the list, those that the file names first and in its order, with its numbers;
/// the others follow as they stood. Where the file has a group of favourites, its channels and no
/// others of the file are marked. Channels are known by the identifier, else by a name; an entry
/// that names none is a loss (L404), one that names a channel again, too (L403). Failure for a file
/// that is neither.
ImportResult Read(const Input& input, const ImportRequest& request, Losses& losses);

}  // namespace zortunedex::kit::interchange::m3u

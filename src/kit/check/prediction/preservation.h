// Proof that a repair leaves alone what it does not concern.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/subject/channel_tree.h"
#include "kit/check/subject/code_page_text.h"

namespace zortunedex::kit::check {

/// What is not as it was after findings of `before` were mended: nothing, or a sentence. Both have
/// elements. Every
/// channel that none of them is about has to be in the same list with all its values, and with its
/// index unless one of them is about the list.
std::optional<std::string> WhatIsLost(const markup::Document& before,
                                      const std::vector<const Finding*>& mended,
                                      const markup::Document& after, ChannelFile kind,
                                      const Database& database, CodePageText& text);

}  // namespace zortunedex::kit::check

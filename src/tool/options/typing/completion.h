#pragma once

#include <string>

namespace zortunedex::kit::tool {

/// A script that completes tunedex's command lines in a shell, "bash" or "zsh": commands, options
/// and the words that they take, made of what the parser knows.
std::string CompletionScript(const std::string& shell);

}  // namespace zortunedex::kit::tool

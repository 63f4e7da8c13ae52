#include <iostream>

#include "tool/commands/commands.h"
#include "tool/options/typing/completion.h"

namespace zortunedex::kit::tool::commands {

void PrintCompletion(const Options& options) { std::cout << CompletionScript(options.shell); }

}  // namespace zortunedex::kit::tool::commands

#pragma once

namespace zortunedex::kit::tool::commands {

/// The command is done, but its user should look at what it says: the program ends with 3.
void AskToLook();

/// 0, or 3 when AskToLook was called.
int ExitStatus();

}  // namespace zortunedex::kit::tool::commands

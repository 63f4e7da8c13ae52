#include "tool/commands/running/exit_status.h"

namespace zortunedex::kit::tool::commands {
namespace {

int g_status = 0;

}  // namespace

void AskToLook() { g_status = 3; }

int ExitStatus() { return g_status; }

}  // namespace zortunedex::kit::tool::commands

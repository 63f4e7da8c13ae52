// For host programs: their arguments as the text that the library's methods take.
//
// WideArguments answers them with the program's name first. Windows: they come from the command
// line itself, since `argv` has lost what the code page lacks; link shell32. Linux: they are UTF-8,
// and one that is not raises std::system_error.
#pragma once

#ifdef _WIN32
#include "platform/windows/arguments.h"
#else
#include "platform/linux/arguments.h"
#endif

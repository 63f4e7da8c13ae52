#pragma once

#include <string>

#include "platform/linux/registry/reg_file.h"
#include "support/input.h"

/// Ends the run when what a registry file is written as does not read back as the same file.
void RequireWrittenIsRead(const RegFile& file);

/// A name for a value. The format has no way to say a line break in one, and callers use none.
std::u16string ValueName(Input& input);

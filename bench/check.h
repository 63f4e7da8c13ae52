#pragma once

namespace bench {

/// Ends the program with a message when the condition does not hold: a measurement of something
/// that went wrong is worth nothing.
void Check(bool condition, const char* message);

}  // namespace bench

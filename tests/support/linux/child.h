#pragma once

#include <functional>

/// What `check` answers in a child process, whose limits and rights may change. False when the
/// child ended in any other way.
bool InChild(const std::function<bool()>& check);

/// The same as a user without rights on other users' files.
bool AsNobody(const std::function<bool()>& check);

#pragma once

#include <functional>

/// What `check` answers in a child process, whose limits and rights may change. False when the
/// child ended in any other way.
bool InChild(const std::function<bool()>& check);

/// What `work` answers in a child process, or the status that it ended with by itself; -1 when it
/// did not end so.
int ExitStatusOf(const std::function<int()>& work);

/// The same as InChild as a user without rights on other users' files.
bool AsNobody(const std::function<bool()>& check);

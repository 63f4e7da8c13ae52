#pragma once

#include <functional>
#include <string>

namespace zortunedex::kit {

/// Takes what the user should know of an operation that goes on all the same, one sentence at a
/// time and at the moment it is known: also when the operation fails afterwards. May be empty.
using TakeNote = std::function<void(const std::string& note)>;

/// Gives a note to who takes notes.
inline void Tell(const TakeNote& take, const std::string& note) {
  if (take) take(note);
}

}  // namespace zortunedex::kit

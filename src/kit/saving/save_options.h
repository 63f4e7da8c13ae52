#pragma once

#include <optional>

#include "core/interfaces.h"
#include "kit/notes.h"
#include "kit/reading/readable.h"

namespace zortunedex::kit {

/// How a list is saved.
struct SaveOptions {
  std::optional<EStorageType> format;  ///< without one the library's own choice: plain
  TakeNote note;
  Unreadable unreadable = Unreadable::Refuse;
};

}  // namespace zortunedex::kit

#pragma once

#include <new>

#include "platform/com_error.h"

/// Lack of memory leaves the seam as ComError alone.
template <typename Work>
auto Guarded(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw ComError(E_OUTOFMEMORY);
  }
}

#pragma once

#include "kit/failure.h"

/// The command line makes no sense: exit status 2.
struct UsageError : InvalidArgument {
  using InvalidArgument::InvalidArgument;
};

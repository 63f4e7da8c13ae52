// The library for Linux.
#pragma once

#include "core/interfaces.h"

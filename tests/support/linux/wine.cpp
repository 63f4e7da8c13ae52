#include "support/wine.h"

bool RunsOnWine() { return false; }

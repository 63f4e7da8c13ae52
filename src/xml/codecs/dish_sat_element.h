// The SAT element of the user settings file: one satellite on one dish.
#pragma once

#include "core/interfaces.h"
#include "platform/dom.h"
#include "xml/codecs/direction.h"

namespace xml {

/// Moves one assignment between its element and its record. The result is that of the last setter
/// or attribute; writing stops at the first getter that fails. E_POINTER for null or an empty
/// element.
HRESULT DishSatElementIO(const dom::Element& element, IDishSatInfo* dishSat, Direction direction);

}  // namespace xml

#pragma once

#include "core/station_blocks.h"
#include "platform/dom_name.h"

namespace xml {

// The names in the rows of station blocks, which stay.

inline dom::Name NameOf(const station_blocks::Field& field) {
  return dom::Name::Lasting(field.attribute);
}

inline dom::Name NameOf(const station_blocks::StreamList& list) {
  return dom::Name::Lasting(list.element);
}

}  // namespace xml

// The elements of the satellite file: Satellite, Transponder and LNB.
#pragma once

#include "core/interfaces.h"
#include "platform/dom.h"
#include "xml/codecs/direction.h"

namespace xml {

/// Moves one satellite between its element and its record; transponders are not looked at. The
/// result is that of the last setter or attribute; writing stops at the first getter that fails.
/// The file has no place for the west flag: reading says east, writing drops it. E_POINTER for null
/// or an empty element.
HRESULT SatelliteElementIO(const dom::Element& element, ISatelliteInfo* satellite,
                           Direction direction);

/// Reads one transponder. A word that is none leaves its value at NOT_SET. Transponders and LNB
/// types are never written: E_NOTIMPL, and nothing changes.
HRESULT TransponderElementIO(const dom::Element& element, ITransponderInfo* transponder,
                             Direction direction);

/// Reads one LNB type; a missing type is the empty text.
HRESULT LNBElementIO(const dom::Element& element, ILNBInfo* lnb, Direction direction);

}  // namespace xml

// The note of the selection in PreSetChannelInfo.xml. A selection that replaces channels reaches
// the preset file's document only until that is read again, right after; so the note is put there
// in a way of its own.
#pragma once

#include "kit/presets/presets.h"

namespace zortunedex::kit::preset_note {

/// True when the file says what is selected.
bool IsThere(const Location& location);

/// Puts the selection into the presets of a database that was opened for one-segment, in memory:
/// opened for another signal type as well, it keeps them and touches no channel list.
void Put(const Database& database, const Location& location, LONG area, LONG subArea);

/// Writes the selection into the file and nothing else; `before` is what the file holds. Raises a
/// Failure when that is not possible, and when the file does not hold it afterwards.
void Write(const Location& location, const Presets& before, LONG area, LONG subArea);

/// True when the customer's lists stand in the file as 0, 1, 2, ...: numbering them afresh, as
/// every deletion does, then changes nothing.
bool ListsAreInOrder(const Location& location, const Presets& presets);

}  // namespace zortunedex::kit::preset_note

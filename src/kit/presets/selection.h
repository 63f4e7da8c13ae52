#pragma once

#include "kit/presets/presets.h"
#include "kit/saving/save_options.h"

namespace zortunedex::kit {

/// Makes the channels of a sub-area the channel list of the location, on a database that does
/// nothing else, and compares what the file holds then. Raises a Failure when it does not hold
/// them. The selection is not noted in the preset file (see preset_note.h).
void SelectList(const Location& location, LONG area, const PresetList& list,
                const SaveOptions& options);

}  // namespace zortunedex::kit

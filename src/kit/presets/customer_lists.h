// Storing and deleting the customer's lists of the preset file. What was written is read back and
// compared; a Failure says what is not as it was meant.
#pragma once

#include "kit/notes.h"
#include "kit/presets/presets.h"

namespace zortunedex::kit {

struct StoredList {
  PresetList list;
  std::size_t stored = 0;    ///< channels that the channel list had
  std::size_t replaced = 0;  ///< of those that the list had under their indexes
  std::size_t kept = 0;      ///< others of the list
};

/// Stores the one-segment channels of the location under the number of an old list, whose channels
/// are replaced by their index and otherwise stay, or under the next free number.
StoredList StoreCustomerList(const Location& location, LONG number, const WideText& name);

/// Deletes a list; the others move up, and so does the note of the one that is selected. Answers
/// the list as it was.
PresetList DropCustomerList(const Location& location, LONG number, const TakeNote& note);

}  // namespace zortunedex::kit

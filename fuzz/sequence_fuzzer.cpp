// One database driven by calls that the input decides on, beside a plain model of its lists.
#include "support/channel_sequence.h"
#include "support/dish_sequence.h"
#include "support/fuzz.h"

void Fuzz(const BYTE* data, std::size_t size) {
  Input input(data, size);
  const Scratch& scratch = Scratch::Emptied();
  ChannelSequence channels(scratch);
  DishSequence dishes(scratch);
  while (!input.IsEmpty()) {
    if (input.Below(4) == 0)
      dishes.Step(input);
    else
      channels.Step(input);
  }
  channels.RequireSame();
  dishes.RequireSame();
  scratch.RequireNoStrayFile();
}

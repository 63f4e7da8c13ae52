// What the commands that change a channel list do to it, between opening and saving.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kit/saving/list_editor.h"
#include "tool/options/options.h"

namespace zortunedex::kit::tool::channel_edits {

struct Done {
  std::vector<UINT> indexes;  ///< channels that were added or changed, or had the values already
  bool renumbered = false;    ///< the whole list was; the rest of this tells nothing then
  std::size_t changed = 0;    ///< how many of them are not as they were
  std::string text;           ///< what people are told; may be empty
};

/// Raises a Failure when the list is not one that this can be done to, InvalidArgument for values
/// that make no sense; what was changed by then must not be saved.
using Edit = Done (*)(ListEditor& editor, const Options& options);

Done Add(ListEditor& editor, const Options& options);
Done Set(ListEditor& editor, const Options& options);
Done EditMatching(ListEditor& editor, const Options& options);
Done Rename(ListEditor& editor, const Options& options);
Done Favor(ListEditor& editor, const Options& options);
Done Lock(ListEditor& editor, const Options& options);
Done Remove(ListEditor& editor, const Options& options);
Done Move(ListEditor& editor, const Options& options);
Done Sort(ListEditor& editor, const Options& options);

/// What a command does; null for one that changes no channel list.
Edit Find(std::string_view command);

}  // namespace zortunedex::kit::tool::channel_edits

#pragma once

#include "kit/model/channel_table.h"
#include "kit/saving/save_options.h"

namespace zortunedex::kit {

/// Makes ChanInfo.xml of the directory hold the table's channels in the place of those that it has
/// for that country and signal type. Everything is checked before the file is touched, and what was
/// written is read back and compared; nothing is written where nothing differs. Raises a Failure
/// for channels that the file cannot hold (it stays as it was then), among them indexes that do not
/// ascend, and when the file does not hold them afterwards; InvalidArgument for a station block
/// that is not the signal type's. Answers the table as it reads back.
ChannelTable SaveTable(const std::string& directory, const ChannelTable& table,
                       const SaveOptions& options = {});

}  // namespace zortunedex::kit

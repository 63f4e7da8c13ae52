// The whole of ChanInfo.xml, whatever it holds.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "kit/model/channel.h"

namespace zortunedex::kit {

/// Every channel that the file holds, by country and signal type; sets without channels as well.
using Inventory = std::map<std::pair<DWORD, InputSignalType>, std::vector<Channel>>;

/// Failure when the directory cannot be opened or its file cannot be read.
Inventory TakeInventory(const std::string& directory);

/// Writes the file in another form and compares every channel. Raises a Failure when there is no
/// file, when the form cannot keep a value, and when the file does not hold the same afterwards.
void RewriteFile(const std::string& directory, EStorageType format);

}  // namespace zortunedex::kit

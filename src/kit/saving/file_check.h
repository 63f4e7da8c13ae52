// Checks of the whole file around a save.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace file_check {

/// Raises a Failure when the file, or the country that a save would add to it, holds a value that
/// the pre-formatted form cannot keep. What the location's own list writes is not looked at: that
/// is checked channel by channel.
void RequirePreFormattable(const Location& location);
/// The same for every value of the file.
void RequirePreFormattable(const std::string& directory);

/// Every channel that the file holds, by country and signal type; sets without channels as well.
using Inventory = std::map<std::pair<DWORD, InputSignalType>, std::vector<Channel>>;

/// Failure when the directory cannot be opened or its file cannot be read.
Inventory TakeInventory(const std::string& directory);

/// Watches whether a save had to put aside a file that could not be read, and says so.
class UnreadableWatch {
 public:
  explicit UnreadableWatch(const std::string& directory, const std::string& file = "ChanInfo.xml");
  /// True when a file was put aside since.
  bool PutAside() const;
  void Report() const;

 private:
  std::string m_directory;
  std::string m_file;
  std::size_t m_before;
};

}  // namespace file_check

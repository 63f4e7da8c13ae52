// The data files of a directory in memory.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace check {

inline constexpr std::string_view kChannels = "ChanInfo.xml";
inline constexpr std::string_view kPresets = "PreSetChannelInfo.xml";
inline constexpr std::string_view kCatalogue = "SatelliteInfo.xml";
inline constexpr std::string_view kSettings = "UserSettings.xml";
inline constexpr std::string_view kDataFiles[] = {kChannels, kPresets, kCatalogue, kSettings};

/// Bytes by name; nothing for a file that is not there.
using Files = std::map<std::string, std::optional<std::string>, std::less<>>;

/// Null for a file that is not there.
const std::string* BytesOf(const Files& files, std::string_view name);

/// The data files, and what was put aside of them (NAME.unreadable...). Failure for a directory or
/// a file that cannot be read.
Files ReadFiles(const std::string& directory);

/// The data file that a name is put aside of: "ChanInfo.xml" of "ChanInfo.xml.unreadable.2"; empty
/// for another name.
std::string_view PutAsideOf(std::string_view name);

/// Fills an empty directory with the data files.
void Write(const Files& files, const std::string& directory);

}  // namespace check

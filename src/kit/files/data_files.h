// The data files of a directory, on the disk and in memory.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zortunedex::kit::data_files {

inline constexpr std::string_view kChannels = "ChanInfo.xml";
inline constexpr std::string_view kPresets = "PreSetChannelInfo.xml";
inline constexpr std::string_view kCatalogue = "SatelliteInfo.xml";
inline constexpr std::string_view kSettings = "UserSettings.xml";
inline constexpr std::string_view kDataFiles[] = {kChannels, kPresets, kCatalogue, kSettings};

/// Bytes by name; nothing for a file that is not there.
using Files = std::map<std::string, std::optional<std::string>, std::less<>>;

/// The bytes of a name; nothing also for a name that is not among them.
const std::optional<std::string>& BytesOf(const Files& files, std::string_view name);

/// True for the name of one of the four.
bool IsDataFile(std::string_view name);

/// The data file that a name is put aside of: "ChanInfo.xml" of "ChanInfo.xml.unreadable.2"; empty
/// for another name.
std::string_view PutAsideOf(std::string_view name);

/// Where a name stands in a directory, as UTF-8.
std::string PathOf(const std::string& directory, std::string_view name);

/// The file at a path, or nothing where there is none. UnreadableFile, with the name that a message
/// shall have, when it cannot be read.
std::optional<std::string> ReadAt(const std::string& path, std::string_view name);

/// The four data files. UnreadableFile when one cannot be read.
Files ReadDataFiles(const std::string& directory);

/// Writes a temporary copy. Failure when that does not work.
void WriteCopy(const std::string& path, std::string_view name, std::string_view bytes);

}  // namespace zortunedex::kit::data_files

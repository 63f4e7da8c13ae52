// Files that are read and written whole.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zortunedex::kit::whole_file {

std::filesystem::path PathOf(const std::string& utf8);

/// Bytes of a regular file; nothing when there is none or it cannot be read.
std::optional<std::string> Read(const std::filesystem::path& path);

/// Gives `take` the bytes of a regular file part by part, until it answers false, and keeps none of
/// them. False when there is none or it cannot be read.
bool ReadParts(const std::filesystem::path& path,
               const std::function<bool(std::string_view part)>& take);
/// True when a regular file holds these bytes.
bool Holds(const std::filesystem::path& path, std::string_view bytes);

/// Writes a file (its path is UTF-8) as a whole or not at all, durably. Raises a Failure when it
/// does not hold these bytes afterwards.
void Replace(const std::string& path, std::string_view bytes);
/// The same where nothing stands yet. Failure also when something does.
void WriteNew(const std::string& path, std::string_view bytes);

}  // namespace zortunedex::kit::whole_file

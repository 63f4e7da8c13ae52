// Steps that replacing a file, making a new one and keeping a copy of one have in common.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <string>

/// The directory that a path's last name stands in.
std::string DirectoryOf(const std::string& path);

/// Gives an open file the owner, group and mode of `old` as far as this process may. Nobody gets a
/// right that the old file did not give him: without the old owner or group the set-id bits go, and
/// without the old group the group has what others have.
void KeepOwnerAndMode(int handle, const struct stat& old);

/// Moves to a name where nothing stands. False when that cannot be told and done.
bool MoveToFree(const std::string& from, const std::string& to);

/// Takes a file away at the end of its scope, when it is still there.
struct Removal {
  const std::string& path;
  ~Removal() { unlink(path.c_str()); }
};

/// Makes what was created, renamed or removed in a directory durable. False at a device error; file
/// systems that cannot, and directories that may not be read, count as done.
bool SyncDirectory(const std::string& directory);

#pragma once

#include <filesystem>

#include "core/interfaces.h"
#include "platform/com_ptr.h"

namespace bench {

/// A new database, closed.
ComPtr<IZorTunedex> NewDatabase();

/// Opens a directory for satellite channels.
void Open(const ComPtr<IZorTunedex>& database, const std::filesystem::path& directory);

/// The list of satellite channels.
ComPtr<IChannelInfoMgr> SatelliteList(const ComPtr<IZorTunedex>& database);

/// Ends the program unless the catalogue has so many transponders.
void CheckCatalogue(const ComPtr<IZorTunedex>& database, UINT transponders);

/// Ends the program unless the list has so many channels.
void CheckCount(const ComPtr<IZorTunedex>& database, UINT count);

}  // namespace bench

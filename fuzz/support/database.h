// Databases as a host sees them: opened through the entry point, walked and changed through the
// public interfaces alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "support/scratch.h"

struct OpenedWith {
  InputSignalType signalType = InputSignalDVBSatellite;
  DWORD countryCode = 49;
};

/// The first channel set that the bytes seem to hold, so that opening the file reads something.
OpenedWith FirstSet(std::string_view bytes);

ComPtr<IZorTunedex> OpenDatabase(const Scratch& scratch, const OpenedWith& with);
ComPtr<IChannelInfoMgr> ListOf(const ComPtr<IZorTunedex>& database, InputSignalType signalType);

/// Asks a list and all of its channels that can be found for everything.
void WalkChannels(const ComPtr<IChannelInfoMgr>& list);
/// Uses every setter and every operation of a list. Its indexes are 1, 2, 3, ... afterwards.
void ChangeChannels(const ComPtr<IChannelInfoMgr>& list);
/// What the file keeps of a list with the indexes 1, 2, 3, ..., a line for each channel. Texts are
/// shortened: cutting them at another length is no difference.
std::string DescribeChannels(const ComPtr<IChannelInfoMgr>& list);
/// The same with every byte of the stations.
std::string DescribeStations(const ComPtr<IChannelInfoMgr>& list);
/// The same of a list with any indexes, which has no use afterwards: its indexes are spent, and
/// there is one channel more.
std::string DescribeEach(const ComPtr<IChannelInfoMgr>& list);

/// Everything in the catalogue of a database, asked in every way.
std::string DescribeCatalogue(const ComPtr<IZorTunedex>& database);
/// Adds to, changes and removes from the lists of the catalogue.
void ChangeCatalogue(const ComPtr<IZorTunedex>& database);

/// The assignments of the four dishes, each different one once.
std::vector<std::string> DescribeDishes(const ComPtr<IZorTunedex>& database);
/// Changes, adds to and removes from the dishes that hold something.
void ChangeDishes(const ComPtr<IZorTunedex>& database);

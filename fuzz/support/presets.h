// The presets and the customer lists of one-segment reception, through the public interface.
#pragma once

#include <string>

#include "support/database.h"

inline constexpr OpenedWith kOneSegment = {InputSignalISDBTerrestrialOneSeg, 81};

/// The areas, their sub-areas, the names and the channels of these; of many the first ones and the
/// last.
std::string DescribePresets(const ComPtr<IZorTunedex>& database);

/// Selects some sub-areas, there or not. Each selection has to put the sub-area's channels in the
/// place of the list's, and reads the preset file again.
void SelectSubAreas(const ComPtr<IZorTunedex>& database);

/// What another database finds as its channels.
std::string ChannelsInFile(const Scratch& scratch);

/// Stores the channels of the file as customer lists: under a number that is not free, over the
/// first list, and under the free number. False where there is no area for them: nothing is written
/// then.
bool StoreCustomerLists(const ComPtr<IZorTunedex>& database, const std::string& channels);

/// Notes a selection in the document and deletes the first customer list, which writes both. False
/// where there is no such list: nothing is written then.
bool DeleteCustomerList(const Scratch& scratch, const ComPtr<IZorTunedex>& database);

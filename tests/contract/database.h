// What a host of the library needs at every turn.
#pragma once

#include <filesystem>
#include <vector>

#include "core/interfaces.h"
#include "platform/bstr.h"
#include "platform/com_ptr.h"

/// The signal types that have a list, in the order in which the lists are saved.
inline constexpr InputSignalType kListedTypes[] = {
    InputSignalAnalogAntenna, InputSignalAnalogCable,
    InputSignalFMRadio,       InputSignalATSCAntenna,
    InputSignalATSCCable,     InputSignalDVBTerrestrial,
    InputSignalDVBSatellite,  InputSignalDVBCable,
    InputSignalDVBHandheld,   InputSignalISDBTerrestrial,
    InputSignalISDBSatellite, InputSignalISDBCable,
    InputSignalTDMBMobile,    InputSignalISDBTerrestrialOneSeg,
};

inline constexpr InputSignalType kUnlistedTypes[] = {
    InputSignalUnknown, InputSignalAnalogComposite,       InputSignalAnalogSVideo,
    InputSignalAMRadio, static_cast<InputSignalType>(-1), static_cast<InputSignalType>(177),
};

constexpr InputSignalType kSatellite = InputSignalDVBSatellite;
constexpr InputSignalType kTerrestrial = InputSignalDVBTerrestrial;

inline constexpr char kChannelFile[] = "ChanInfo.xml";

constexpr DWORD kGermany = 49;
constexpr DWORD kUnitedKingdom = 44;
constexpr DWORD kAllServices = 0xFFFFFFFF;

/// The class object of the library.
ComPtr<IClassFactory> GetFactory();

/// A new database, closed.
ComPtr<IZorTunedex> NewDatabase();

/// Text of a path as `Open` takes it.
Bstr PathText(const std::filesystem::path& path);

/// A new database, opened; a failure is reported.
ComPtr<IZorTunedex> OpenDatabase(const std::filesystem::path& directory, InputSignalType signalType,
                                 DWORD countryCode = kGermany);

/// A database's list; null, and reported, when there is none.
ComPtr<IChannelInfoMgr> ListOf(const ComPtr<IZorTunedex>& database, InputSignalType signalType);

UINT CountOf(const ComPtr<IChannelInfoMgr>& list);

/// The stored indexes in list order. Navigation is asked, so a list of one is answered empty.
std::vector<UINT> IndexesOf(const ComPtr<IChannelInfoMgr>& list);

/// First channel with the stored index; null, and reported, when there is none.
ComPtr<IChannelInfo> ChannelAt(const ComPtr<IChannelInfoMgr>& list, UINT index);

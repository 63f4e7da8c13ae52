"""Made by scripts/generate-python of the public headers; changed there, not here."""
from __future__ import annotations

import uuid
from typing import Mapping, Tuple

from ._layout import ComponentTable, Field, Layout, Named, StreamTable

VERSION = "1.0.0"

CLSID_ZorTunedex = uuid.UUID("d4fdc473-b225-4746-9983-065f8f21d798")
LIBID_ZORTUNEDEXLib = uuid.UUID("b63adc9e-1200-4e8c-95f7-bc44eb0cdd14")
IID_IZorTunedex = uuid.UUID("d68deb38-cc68-4bcf-9757-edd6ff66f27e")
IID_IChannelInfo = uuid.UUID("3584ea46-f4b3-4d80-9d59-6372977c88a0")
IID_IChannelInfoMgr = uuid.UUID("ff376ee5-b768-40cf-9f72-128dd130584a")
IID_ISatelliteInfo = uuid.UUID("678f0641-a164-49b2-86c0-5b269c54e547")
IID_ISatelliteInfoMgr = uuid.UUID("25965562-4302-4466-a569-7a451620a4bb")
IID_ITransponderInfo = uuid.UUID("0823766e-9d78-4c9a-a1bb-8fb5be797b1e")
IID_ITransponderInfoMgr = uuid.UUID("a4807474-3d36-413e-b497-fdd7233bdd14")
IID_ILNBInfo = uuid.UUID("ac27b5d0-a7a1-4d86-9a60-ce71d8327150")
IID_ILNBInfoMgr = uuid.UUID("303c56dc-22c2-47bc-baaa-397d245b17b3")
IID_IDishSatInfo = uuid.UUID("2b02c9f4-a2f3-436e-80f5-aaa924838dd7")
IID_IDishSatInfoMgr = uuid.UUID("6364eafd-2dbe-4434-b42f-46705fa6ce63")

class Signal(Named):
    """Kind of signal of a list of channels."""

    Unknown = 0
    AnalogAntenna = 1
    AnalogCable = 2
    AnalogComposite = 3
    AnalogSVideo = 4
    FMRadio = 5
    AMRadio = 6
    ATSCAntenna = 16
    ATSCCable = 32
    DVBCable = 48
    DVBSatellite = 64
    DVBTerrestrial = 80
    DVBHandheld = 96
    ISDBCable = 112
    ISDBSatellite = 128
    ISDBTerrestrial = 144
    TDMBMobile = 160
    ISDBTerrestrialOneSeg = 176

class Service(Named):
    """Kind of service of a channel."""

    Unknown = 0
    AnalogTV = 1
    DigitalTV = 2
    DigitalAudio = 4
    DigitalRadio = 8
    DataBroadcast = 240
    Others = -268435456
    All = -1

class Region(Named):
    """Where a satellite is received."""

    Unknown = 0
    Asia = 1
    Europe = 2
    Atlantic = 3
    America = 4

class Division(Named):
    """Division of the SatcoDX lists of satellites."""

    Unknown = 0
    No1 = 1
    No2 = 2
    No3 = 3
    No4 = 4
    No5 = 5
    No6 = 6
    No7 = 7
    No8 = 8
    No9 = 9

class Band(Named):
    """Band of a list of transponders."""

    Unknown = 0
    CBand = 1
    KuBand = 2
    KaBand = 4

# The methods behind the three of IUnknown, in their order; their arguments are numbers
# of 32 bits (i with sign, u without) and pointers (p).
SLOTS: Mapping[str, Tuple[Tuple[str, str], ...]] = {
    "IChannelInfo": (
        ("GetSignalType", "p"),
        ("SetSignalType", "i"),
        ("GetServiceType", "p"),
        ("SetServiceType", "i"),
        ("GetChannelNo", "p"),
        ("SetChannelNo", "u"),
        ("GetChannelIndex", "p"),
        ("SetChannelIndex", "u"),
        ("GetChannelName", "p"),
        ("SetChannelName", "p"),
        ("GetChannelDspName", "p"),
        ("SetChannelDspName", "p"),
        ("GetChannelFreq", "p"),
        ("SetChannelFreq", "u"),
        ("GetChannelOffsetFreq", "p"),
        ("SetChannelOffsetFreq", "i"),
        ("GetStationInfo", "p"),
        ("SetStationInfo", "p"),
        ("GetFavor", "p"),
        ("SetFavor", "u"),
        ("GetLock", "p"),
        ("SetLock", "i"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
        ("IsScrambled", "p"),
        ("GetMhp", "p"),
    ),
    "IChannelInfoMgr": (
        ("Open", ""),
        ("Close", ""),
        ("Clear", ""),
        ("Load", "pp"),
        ("Save", "pp"),
        ("GetSignalType", "p"),
        ("SetSignalType", "i"),
        ("CreateChannelInfo", "p"),
        ("AddChannelInfo", "p"),
        ("RemoveChannelInfo", "p"),
        ("GetChannelCount", "up"),
        ("GetChannelInfoByNo", "up"),
        ("GetChannelInfoByIndex", "up"),
        ("GetChannelInfoByStation", "pp"),
        ("FindPreChannel", "upuii"),
        ("FindNextChannel", "upuii"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
        ("MoveChannel", "uu"),
        ("SortChannel", "ii"),
    ),
    "IZorTunedex": (
        ("Open", "pui"),
        ("Close", ""),
        ("GetChannelInfoMgr", "ip"),
        ("LoadChannelFromFile", ""),
        ("SaveChannelToFile", ""),
        ("GetStorageType", "p"),
        ("SetStorageType", "i"),
        ("LoadSatInfoFromFile", ""),
        ("SaveSatInfoToFile", ""),
        ("GetSatelliteInfoMgr", "p"),
        ("GetLNBInfoMgr", "p"),
        ("LoadUserSettingsFromFile", ""),
        ("SaveUserSettingsToFile", ""),
        ("GetDishSatInfoMgr", "p"),
        ("LoadPresetOneSegChannelInfo", ""),
        ("GetAreaCount", "p"),
        ("GetAreaNameByIndex", "ip"),
        ("GetSubAreaCount", "ip"),
        ("GetSubAreaNameByIndex", "iip"),
        ("SetArea", "ii"),
        ("GetArea", "pp"),
        ("SaveCustomerChannelList", "ip"),
        ("DeleteCustomerChannelList", "i"),
        ("GetPresetChannelMgr", "iip"),
    ),
    "ITransponderInfo": (
        ("GetName", "p"),
        ("SetName", "p"),
        ("GetCarrierFrequency", "p"),
        ("SetCarrierFrequency", "u"),
        ("GetPolarisation", "p"),
        ("SetPolarisation", "i"),
        ("GetSymbolRate", "p"),
        ("SetSymbolRate", "i"),
        ("GetInnerFECRate", "p"),
        ("SetInnerFECRate", "i"),
        ("GetModulationType", "p"),
        ("SetModulationType", "i"),
        ("GetSpectralInversion", "p"),
        ("SetSpectralInversion", "i"),
        ("GetIndex", "p"),
        ("SetIndex", "u"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "ITransponderInfoMgr": (
        ("Open", ""),
        ("Close", ""),
        ("Clear", ""),
        ("Load", "pp"),
        ("Save", "pp"),
        ("CreateTransponderInfo", "p"),
        ("AddTransponderInfo", "p"),
        ("RemoveTransponderInfo", "p"),
        ("GetTransponderCount", "p"),
        ("GetTransponderInfoByIndex", "up"),
        ("GetTransponderInfoByName", "pp"),
        ("MoveTransponder", "uu"),
        ("SortTransponder", "ii"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "ISatelliteInfo": (
        ("GetOrbitalPosition", "pp"),
        ("SetOrbitalPosition", "ii"),
        ("GetAzimuth", "p"),
        ("SetAzimuth", "i"),
        ("GetElevation", "p"),
        ("SetElevation", "i"),
        ("GetIndex", "p"),
        ("SetIndex", "u"),
        ("GetName", "p"),
        ("SetName", "p"),
        ("GetID", "p"),
        ("SetID", "p"),
        ("GetRegion", "p"),
        ("SetRegion", "i"),
        ("GetDivision", "p"),
        ("GetTransponderMgr", "ip"),
        ("SetDivision", "i"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "ISatelliteInfoMgr": (
        ("Open", ""),
        ("Close", ""),
        ("Clear", ""),
        ("Load", "pp"),
        ("Save", "pp"),
        ("CreateSatelliteInfo", "p"),
        ("AddSatelliteInfo", "p"),
        ("RemoveSatelliteInfo", "p"),
        ("GetSatCount", "uiip"),
        ("GetSatInfoByIndex", "uuiip"),
        ("GetSatInfoByName", "pp"),
        ("GetSatInfoByID", "pp"),
        ("MoveSat", "uu"),
        ("SortSat", "ii"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "ILNBInfo": (
        ("GetIndex", "p"),
        ("SetIndex", "u"),
        ("GetType", "p"),
        ("SetType", "p"),
        ("GetLowFreq", "p"),
        ("SetLowFreq", "u"),
        ("GetHighFreq", "p"),
        ("SetHighFreq", "u"),
        ("GetSwitchFreq", "p"),
        ("SetSwitchFreq", "u"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "ILNBInfoMgr": (
        ("Open", ""),
        ("Close", ""),
        ("Clear", ""),
        ("Load", "pp"),
        ("Save", "pp"),
        ("CreateLNBInfo", "p"),
        ("AddLNBInfo", "p"),
        ("RemoveLNBInfo", "p"),
        ("GetLNBCount", "p"),
        ("GetLNBInfoByIndex", "up"),
        ("GetLNBInfoByType", "pp"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "IDishSatInfo": (
        ("GetIndex", "p"),
        ("SetIndex", "u"),
        ("GetID", "p"),
        ("SetID", "p"),
        ("GetBand", "p"),
        ("SetBand", "p"),
        ("GetLowFreq", "p"),
        ("SetLowFreq", "u"),
        ("GetHighFreq", "p"),
        ("SetHighFreq", "u"),
        ("GetSwitchFreq", "p"),
        ("SetSwitchFreq", "u"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
    "IDishSatInfoMgr": (
        ("Open", ""),
        ("Close", ""),
        ("Clear", ""),
        ("Load", "pp"),
        ("Save", "pp"),
        ("CreateDishSatInfo", "p"),
        ("AddDishSatInfo", "pu"),
        ("RemoveDishSatInfo", "pu"),
        ("GetDishSatCount", "pu"),
        ("GetDishSatInfoByIndex", "puu"),
        ("GetDirty", "p"),
        ("SetDirty", "i"),
    ),
}

STATION: Tuple[Tuple[str, str], ...] = (
    ('InputSignal', 'i'),
    ('lCountry', 'i'),
    ('lPhysicalChannel', 'i'),
    ('dwFrequency', 'u'),
    ('lOffsetFreq', 'i'),
    ('lTSID', 'i'),
    ('cbInformation', 'u'),
    ('pbInformation', 'p'),
)

ANALOG_CHANNEL: Tuple[Field, ...] = (
    Field('name', 20, 80, 'Text', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Text', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('physicalChannel', 0, 0, 'Number', 'PhysicalChannel', 'Both'),
    Field('freq', 0, 0, 'Number', 'Frequency', 'Both'),
    Field('freqOffset', 0, 0, 'Number', 'OffsetFrequency', 'Both'),
    Field('vbiSrvFlag', 16, 4, 'Number', 'Block', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
    Field('CNI0', 6, 2, 'Number', 'Block', 'Both'),
    Field('CNI1', 8, 2, 'Number', 'Block', 'Both'),
    Field('CNI2', 10, 2, 'Number', 'Block', 'Both'),
    Field('CNI3', 12, 2, 'Number', 'Block', 'Both'),
)

ATSC_CHANNEL: Tuple[Field, ...] = (
    Field('name', 192, 336, 'Text', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Text', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('physicalChannel', 0, 0, 'Number', 'PhysicalChannel', 'Both'),
    Field('majorChannel', 4, 4, 'Number', 'Block', 'Both'),
    Field('minorChannel', 8, 4, 'Number', 'Block', 'Both'),
    Field('serviceType', 0, 4, 'Number', 'Block', 'Both'),
    Field('programNumber', 12, 4, 'Number', 'Block', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
)

ATSC_STREAMS: Tuple[Field, ...] = (
    Field('videoStream', 16, 4, 'Number', 'Block', 'Both'),
    Field('numOfVideoStreams', 20, 4, 'Number', 'Block', 'Both'),
    Field('audioStream', 104, 4, 'Number', 'Block', 'Both'),
    Field('numOfAudioStreams', 108, 4, 'Number', 'Block', 'Both'),
)

DVBH_CHANNEL: Tuple[Field, ...] = (
    Field('name', 448, 424, 'Text', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Text', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('physicalChannel', 0, 0, 'Number', 'PhysicalChannel', 'Both'),
    Field('networkName', 192, 256, 'Text', 'Block', 'Both'),
    Field('freq', 0, 0, 'Number', 'Frequency', 'Both'),
    Field('freqOffset', 0, 0, 'Number', 'OffsetFrequency', 'Both'),
    Field('serviceType', 0, 4, 'Number', 'Block', 'Both'),
    Field('serviceID', 4, 4, 'Number', 'Block', 'Both'),
    Field('PcrPID', 8, 4, 'Number', 'Block', 'Both'),
    Field('TSID', 0, 0, 'Number', 'TransportStream', 'Both'),
    Field('ONID', 12, 4, 'Number', 'Block', 'Both'),
    Field('CA', 876, 4, 'Number', 'Block', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
    Field('runningStatus', 872, 4, 'Number', 'Block', 'Both'),
    Field('VideoIP', 880, 64, 'Text', 'Block', 'Both'),
    Field('VideoPort', 944, 4, 'Number', 'Block', 'Both'),
    Field('VideoPID', 948, 4, 'Number', 'Block', 'Both'),
    Field('AudioIP', 952, 64, 'Text', 'Block', 'Both'),
    Field('AudioPort', 1016, 4, 'Number', 'Block', 'Both'),
    Field('AudioPID', 1020, 4, 'Number', 'Block', 'Both'),
    Field('EsgIP', 1024, 64, 'Text', 'Block', 'Both'),
    Field('EsgPort', 1088, 4, 'Number', 'Block', 'Both'),
    Field('EsgPID', 1092, 4, 'Number', 'Block', 'Both'),
)

DVBH_STREAMS: Tuple[Field, ...] = (
    Field('videoStream', 16, 4, 'Number', 'Block', 'Both'),
    Field('numOfVideoStreams', 20, 4, 'Number', 'Block', 'Both'),
    Field('audioStream', 104, 4, 'Number', 'Block', 'Both'),
    Field('numOfAudioStreams', 108, 4, 'Number', 'Block', 'Both'),
)

DVBS_CHANNEL: Tuple[Field, ...] = (
    Field('name', 608, 336, 'Text', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Text', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('physicalChannel', 0, 0, 'Number', 'PhysicalChannel', 'Both'),
    Field('networkName', 352, 256, 'Text', 'Block', 'Both'),
    Field('freq', 0, 0, 'Number', 'Frequency', 'Both'),
    Field('freqOffset', 0, 0, 'Number', 'OffsetFrequency', 'Both'),
    Field('serviceType', 0, 4, 'Number', 'Block', 'Both'),
    Field('serviceID', 4, 4, 'Number', 'Block', 'Both'),
    Field('PcrPID', 8, 4, 'Number', 'Block', 'Both'),
    Field('TSID', 0, 0, 'Number', 'TransportStream', 'Both'),
    Field('ONID', 12, 4, 'Number', 'Block', 'Both'),
    Field('CA', 948, 4, 'Number', 'Block', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
    Field('runningStatus', 944, 4, 'Number', 'Block', 'Both'),
)

DVBS_STREAMS: Tuple[Field, ...] = (
    Field('videoStream', 16, 4, 'Number', 'Block', 'Both'),
    Field('numOfVideoStreams', 20, 4, 'Number', 'Block', 'Both'),
    Field('audioStream', 184, 4, 'Number', 'Block', 'Both'),
    Field('numOfAudioStreams', 188, 4, 'Number', 'Block', 'Both'),
    Field('teletextStream', 1256, 4, 'Number', 'Block', 'Both'),
    Field('numOfTeletextStreams', 1260, 4, 'Number', 'Block', 'Both'),
    Field('subtitleStream', 1344, 4, 'Number', 'Block', 'Both'),
    Field('numOfSubtitleStreams', 1348, 4, 'Number', 'Block', 'Both'),
    Field('numOfDsmccStreams', 1432, 4, 'Number', 'Block', 'Both'),
    Field('numOfMhpAitStreams', 2332, 4, 'Number', 'Block', 'Both'),
)

DVBS_SATELLITE_PARAMS: Tuple[Field, ...] = (
    Field('polarisation', 952, 4, 'Polarisation', 'Block', 'Both'),
    Field('westPosition', 956, 4, 'Number', 'Block', 'Both'),
    Field('azimuth', 960, 4, 'Number', 'Block', 'Both'),
    Field('elevation', 964, 4, 'Number', 'Block', 'Both'),
    Field('orbitalPosition', 968, 4, 'Number', 'Block', 'Both'),
    Field('symbolRate', 972, 4, 'Number', 'Block', 'Both'),
    Field('innerFECRate', 976, 4, 'FecRate', 'Block', 'Both'),
    Field('modulation', 980, 4, 'Modulation', 'Block', 'Both'),
    Field('spectralInversion', 996, 4, 'SpectralInversion', 'Block', 'Both'),
    Field('DiSEqC_Msg', 1000, 256, 'Text', 'Block', 'Both'),
    Field('LNB_LowFreq', 984, 4, 'Number', 'Block', 'Both'),
    Field('LNB_HighFreq', 988, 4, 'Number', 'Block', 'Both'),
    Field('LNB_SwitchFreq', 992, 4, 'Number', 'Block', 'Both'),
)

DVBT_STREAMS: Tuple[Field, ...] = (
    Field('videoStream', 16, 4, 'Number', 'Block', 'Both'),
    Field('numOfVideoStreams', 20, 4, 'Number', 'Block', 'Both'),
    Field('audioStream', 184, 4, 'Number', 'Block', 'Both'),
    Field('numOfAudioStreams', 188, 4, 'Number', 'Block', 'Both'),
    Field('teletextStream', 952, 4, 'Number', 'Block', 'Both'),
    Field('numOfTeletextStreams', 956, 4, 'Number', 'Block', 'Both'),
    Field('subtitleStream', 1040, 4, 'Number', 'Block', 'Both'),
    Field('numOfSubtitleStreams', 1044, 4, 'Number', 'Block', 'Both'),
    Field('dsmccStream', 1128, 4, 'Number', 'Block', 'Both'),
    Field('numOfDsmccStreams', 1132, 4, 'Number', 'Block', 'Both'),
    Field('numOfMhpAitStreams', 2032, 4, 'Number', 'Block', 'Both'),
)

FM_RADIO_CHANNEL: Tuple[Field, ...] = (
    Field('name', 12, 80, 'Text', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Text', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('freq', 0, 0, 'Number', 'Frequency', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
)

ONE_SEG_CHANNEL: Tuple[Field, ...] = (
    Field('name', 608, 80, 'Base64', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Base64', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('physicalChannel', 2572, 4, 'Number', 'PhysicalChannel', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
    Field('Frequency', 0, 0, 'Number', 'Frequency', 'Both'),
    Field('NetworkID', 12, 4, 'Number', 'Block', 'Both'),
    Field('ServiceID', 4, 4, 'Number', 'Block', 'Both'),
)

ONE_SEG_STREAMS: Tuple[Field, ...] = (
    Field('videoStream', 16, 4, 'Number', 'Block', 'Both'),
    Field('numOfVideoStreams', 20, 4, 'Number', 'Block', 'Both'),
    Field('audioStream', 184, 4, 'Number', 'Block', 'Both'),
    Field('numOfAudioStreams', 188, 4, 'Number', 'Block', 'Both'),
    Field('teletextStream', 1040, 4, 'Number', 'Block', 'Both'),
    Field('numOfTeletextStreams', 1044, 4, 'Number', 'Block', 'Both'),
    Field('subtitleStream', 1128, 4, 'Number', 'Block', 'Both'),
    Field('numOfSubtitleStreams', 1132, 4, 'Number', 'Block', 'Both'),
    Field('dsmccStream', 1216, 4, 'Number', 'Block', 'Both'),
    Field('numOfDsmccStreams', 1220, 4, 'Number', 'Block', 'Both'),
    Field('numOfMhpAitStreams', 2120, 4, 'Number', 'Block', 'Both'),
)

STREAM_FIELDS: Tuple[Field, ...] = (
    Field('type', 0, 1, 'Number', 'Block', 'Both'),
    Field('pid', 2, 2, 'Number', 'Block', 'Both'),
    Field('lang', 4, 3, 'Language', 'Block', 'Both'),
)

DATA_STREAM_FIELDS: Tuple[Field, ...] = (
    Field('type', 0, 1, 'Number', 'Block', 'Both'),
    Field('pid', 2, 2, 'Number', 'Block', 'Both'),
    Field('lang', 4, 3, 'Language', 'Block', 'Both'),
    Field('desc', 8, 4, 'Number', 'Block', 'Both'),
    Field('carouselID', 12, 4, 'Number', 'Block', 'Both'),
    Field('componentTag', 16, 4, 'Number', 'Block', 'Both'),
    Field('organizationID', 20, 4, 'Number', 'Block', 'Both'),
    Field('applicationID', 24, 2, 'Number', 'Block', 'Both'),
    Field('dataBroadcastID', 26, 2, 'Number', 'Block', 'Both'),
    Field('associationTag', 28, 4, 'Number', 'Block', 'Both'),
    Field('sdtIndex', 32, 4, 'Number', 'Block', 'Both'),
    Field('flags', 36, 4, 'Number', 'Block', 'Both'),
)

TDMB_CHANNEL: Tuple[Field, ...] = (
    Field('name', 448, 336, 'Text', 'Name', 'Both'),
    Field('nameDisplay', 0, 0, 'Text', 'DisplayName', 'Both'),
    Field('index', 0, 0, 'Number', 'Index', 'Both'),
    Field('physicalChannel', 0, 0, 'Number', 'PhysicalChannel', 'Both'),
    Field('freq', 0, 0, 'Number', 'Frequency', 'Both'),
    Field('favor', 0, 0, 'Number', 'Favorite', 'Both'),
    Field('lock', 0, 0, 'Number', 'Lock', 'Both'),
    Field('runningStatus', 784, 4, 'Number', 'Block', 'Both'),
    Field('EnsembelLab', 192, 256, 'Text', 'Block', 'Both'),
    Field('BitRate', 792, 4, 'Number', 'Block', 'Both'),
)

TDMB_STREAMS: Tuple[Field, ...] = (
    Field('ServiceID', 4, 4, 'Number', 'Block', 'Both'),
    Field('Component_index', 796, 4, 'Number', 'Block', 'WriteOnly'),
    Field('Component index', 796, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfComponents', 800, 4, 'Number', 'Block', 'Both'),
    Field('ServiceType', 0, 4, 'Number', 'Block', 'Both'),
    Field('SubChannelID', 3176, 4, 'Number', 'Block', 'Both'),
    Field('StreamType', 3180, 4, 'Number', 'Block', 'Both'),
    Field('videoStream', 16, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfVideoStreams', 20, 4, 'Number', 'Block', 'ReadOnly'),
    Field('audioStream', 104, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfAudioStreams', 108, 4, 'Number', 'Block', 'ReadOnly'),
    Field('teletextStream', 3184, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfTeletextStreams', 3188, 4, 'Number', 'Block', 'ReadOnly'),
    Field('subtitleStream', 3272, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfSubtitleStreams', 3276, 4, 'Number', 'Block', 'ReadOnly'),
    Field('dsmccStream', 3360, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfDsmccStreams', 3364, 4, 'Number', 'Block', 'ReadOnly'),
    Field('numOfMhpAitStreams', 4264, 4, 'Number', 'Block', 'ReadOnly'),
)

ATSC_LISTS: Tuple[StreamTable, ...] = (
    StreamTable('VideoStream', 20, 24, 8, 10, 'Both'),
    StreamTable('AudioStream', 108, 112, 8, 10, 'Both'),
)

DVBH_LISTS: Tuple[StreamTable, ...] = (
    StreamTable('VideoStream', 20, 24, 8, 10, 'Both'),
    StreamTable('AudioStream', 108, 112, 8, 10, 'Both'),
)

DVBS_LISTS: Tuple[StreamTable, ...] = (
    StreamTable('VideoStream', 20, 24, 16, 10, 'Both'),
    StreamTable('AudioStream', 188, 192, 16, 10, 'Both'),
    StreamTable('TeletextStream', 1260, 1264, 8, 10, 'Both'),
    StreamTable('SubtitleStream', 1348, 1352, 8, 10, 'Both'),
    StreamTable('DsmccStream', 1432, 1436, 16, 56, 'Both'),
    StreamTable('MhpAitStream', 2332, 2336, 8, 56, 'Both'),
)

DVBT_LISTS: Tuple[StreamTable, ...] = (
    StreamTable('VideoStream', 20, 24, 16, 10, 'Both'),
    StreamTable('AudioStream', 188, 192, 16, 10, 'Both'),
    StreamTable('TeletextStream', 956, 960, 8, 10, 'Both'),
    StreamTable('SubtitleStream', 1044, 1048, 8, 10, 'Both'),
    StreamTable('DsmccStream', 1132, 1136, 16, 56, 'Both'),
    StreamTable('MhpAitStream', 2032, 2036, 8, 56, 'Both'),
)

ONE_SEG_LISTS: Tuple[StreamTable, ...] = (
    StreamTable('VideoStream', 20, 24, 16, 10, 'Both'),
    StreamTable('AudioStream', 188, 192, 16, 10, 'Both'),
    StreamTable('TeletextStream', 1044, 1048, 8, 10, 'Both'),
    StreamTable('SubtitleStream', 1132, 1136, 8, 10, 'Both'),
    StreamTable('DsmccStream', 1220, 1224, 16, 56, 'Both'),
    StreamTable('MhpAitStream', 2120, 2124, 8, 56, 'Both'),
)

TDMB_LISTS: Tuple[StreamTable, ...] = (
    StreamTable('VideoStream', 20, 24, 8, 10, 'ReadOnly'),
    StreamTable('AudioStream', 108, 112, 8, 10, 'ReadOnly'),
    StreamTable('TeletextStream', 3188, 3192, 8, 10, 'ReadOnly'),
    StreamTable('SubtitleStream', 3276, 3280, 8, 10, 'ReadOnly'),
    StreamTable('DsmccStream', 3364, 3368, 16, 56, 'ReadOnly'),
    StreamTable('MhpAitStream', 4264, 4268, 8, 56, 'ReadOnly'),
)

TDMB_COMPONENTS = ComponentTable(800, 1064, 8, 3144, 8)

ANALOG = Layout(
    100, ANALOG_CHANNEL, (), (),
    None, (),
)

ATSC = Layout(
    528, ATSC_CHANNEL, ATSC_STREAMS, ATSC_LISTS,
    None, (),
)

DVBH = Layout(
    1096, DVBH_CHANNEL, DVBH_STREAMS, DVBH_LISTS,
    None, (),
)

DVBS = Layout(
    2784, DVBS_CHANNEL, DVBS_STREAMS, DVBS_LISTS,
    None, DVBS_SATELLITE_PARAMS,
)

DVBT = Layout(
    2484, DVBS_CHANNEL, DVBT_STREAMS, DVBT_LISTS,
    None, (),
)

FM_RADIO = Layout(
    92, FM_RADIO_CHANNEL, (), (),
    None, (),
)

ONE_SEG = Layout(
    2580, ONE_SEG_CHANNEL, ONE_SEG_STREAMS, ONE_SEG_LISTS,
    None, (),
)

TDMB = Layout(
    4716, TDMB_CHANNEL, TDMB_STREAMS, TDMB_LISTS,
    TDMB_COMPONENTS, (),
)

LAYOUTS: Mapping[Signal, Layout] = {
    Signal.AnalogAntenna: ANALOG,
    Signal.AnalogCable: ANALOG,
    Signal.FMRadio: FM_RADIO,
    Signal.ATSCAntenna: ATSC,
    Signal.ATSCCable: ATSC,
    Signal.DVBSatellite: DVBS,
    Signal.DVBTerrestrial: DVBT,
    Signal.DVBHandheld: DVBH,
    Signal.TDMBMobile: TDMB,
    Signal.ISDBTerrestrialOneSeg: ONE_SEG,
}

ENTRY_FIELDS: Mapping[int, Tuple[Field, ...]] = {
    10: STREAM_FIELDS,
    56: DATA_STREAM_FIELDS,
}

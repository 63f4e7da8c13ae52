// Enumerations of the interfaces. All are 32-bit signed.
#pragma once

#include <cstdint>

#include "platform/com.h"

/// Kind of signal of a channel or a channel list. A value never changes its meaning.
enum InputSignalType : std::int32_t {
  InputSignalUnknown = 0,
  InputSignalAnalogAntenna = 1,
  InputSignalAnalogCable = 2,
  InputSignalAnalogComposite = 3,
  InputSignalAnalogSVideo = 4,
  InputSignalFMRadio = 5,
  InputSignalAMRadio = 6,
  InputSignalATSCAntenna = 16,
  InputSignalATSCCable = 32,
  InputSignalDVBCable = 48,
  InputSignalDVBSatellite = 64,
  InputSignalDVBTerrestrial = 80,
  InputSignalDVBHandheld = 96,
  InputSignalISDBCable = 112,
  InputSignalISDBSatellite = 128,
  InputSignalISDBTerrestrial = 144,
  InputSignalTDMBMobile = 160,
  InputSignalISDBTerrestrialOneSeg = 176,
};

/// Kind of service. A channel has one value; a query passes a mask of them.
enum EServiceType : std::int32_t {
  ServiceUnknown = 0,
  ServiceAnalogTV = 1,
  ServiceDigitalTV = 2,
  ServiceDigitalAudio = 4,
  ServiceDigitalRadio = 8,
  ServiceDataBroadcast = 240,
  ServiceOthers = -268435456,
  ServiceAll = -1,
};

enum ESortType : std::int32_t {
  SortNone = 0,
  SortChannelByNo = 1,
  SortChannelBySrvType = 2,
  SortTpByFrequency = 4,
  SortSatByLongitude = 8,
  SortSatByName = 22,
  SortSatByRegion = 50,
  SortSatByDivision = 100,
};

enum EStorageType : std::int32_t {
  StorageXML = 0,         ///< plain XML, written by the document itself
  StoragePreFmtXML = 1,   ///< one element a line, values unescaped
  StorageEncryptXML = 2,  ///< not supported
  StorageSQLlite = 4,     ///< not supported
};

enum ESatRegion : std::int32_t {
  RegionUnknown = 0,
  RegionAsia = 1,
  RegionEurope = 2,
  RegionAtlantic = 3,
  RegionAmerica = 4,
};

/// Divisions of the SatcoDX satellite lists.
enum ESatDivision : std::int32_t {
  SatcoDX_Unknown = 0,
  SatcoDX_1 = 1,
  SatcoDX_2 = 2,
  SatcoDX_3 = 3,
  SatcoDX_4 = 4,
  SatcoDX_5 = 5,
  SatcoDX_6 = 6,
  SatcoDX_7 = 7,
  SatcoDX_8 = 8,
  SatcoDX_9 = 9,
};

enum ESatFreqBand : std::int32_t {
  SatFreqBand_Unknown = 0,
  SatFreqBand_CBand = 1,
  SatFreqBand_KuBand = 2,
  SatFreqBand_KaBand = 4,
};

// The tuning enumerations are those of the Broadcast Driver Architecture, names and values. On
// Windows they come from the platform's <bdatypes.h>, unless the host defines
// ZORTUNEDEX_OWN_TUNING_TYPES: it then must not include that header.
#ifndef _BDATYPES_
enum Polarisation : std::int32_t {
  BDA_POLARISATION_NOT_SET = -1,
  BDA_POLARISATION_NOT_DEFINED = 0,
  BDA_POLARISATION_LINEAR_H = 1,
  BDA_POLARISATION_LINEAR_V = 2,
  BDA_POLARISATION_CIRCULAR_L = 3,
  BDA_POLARISATION_CIRCULAR_R = 4,
  BDA_POLARISATION_MAX = 5,
};

enum BinaryConvolutionCodeRate : std::int32_t {
  BDA_BCC_RATE_NOT_SET = -1,
  BDA_BCC_RATE_NOT_DEFINED = 0,
  BDA_BCC_RATE_1_2 = 1,
  BDA_BCC_RATE_2_3 = 2,
  BDA_BCC_RATE_3_4 = 3,
  BDA_BCC_RATE_3_5 = 4,
  BDA_BCC_RATE_4_5 = 5,
  BDA_BCC_RATE_5_6 = 6,
  BDA_BCC_RATE_5_11 = 7,
  BDA_BCC_RATE_7_8 = 8,
  BDA_BCC_RATE_1_4 = 9,
  BDA_BCC_RATE_1_3 = 10,
  BDA_BCC_RATE_2_5 = 11,
  BDA_BCC_RATE_6_7 = 12,
  BDA_BCC_RATE_8_9 = 13,
  BDA_BCC_RATE_9_10 = 14,
  BDA_BCC_RATE_MAX = 15,
};

enum ModulationType : std::int32_t {
  BDA_MOD_NOT_SET = -1,
  BDA_MOD_NOT_DEFINED = 0,
  BDA_MOD_16QAM = 1,
  BDA_MOD_32QAM = 2,
  BDA_MOD_64QAM = 3,
  BDA_MOD_80QAM = 4,
  BDA_MOD_96QAM = 5,
  BDA_MOD_112QAM = 6,
  BDA_MOD_128QAM = 7,
  BDA_MOD_160QAM = 8,
  BDA_MOD_192QAM = 9,
  BDA_MOD_224QAM = 10,
  BDA_MOD_256QAM = 11,
  BDA_MOD_320QAM = 12,
  BDA_MOD_384QAM = 13,
  BDA_MOD_448QAM = 14,
  BDA_MOD_512QAM = 15,
  BDA_MOD_640QAM = 16,
  BDA_MOD_768QAM = 17,
  BDA_MOD_896QAM = 18,
  BDA_MOD_1024QAM = 19,
  BDA_MOD_QPSK = 20,
  BDA_MOD_BPSK = 21,
  BDA_MOD_OQPSK = 22,
  BDA_MOD_8VSB = 23,
  BDA_MOD_16VSB = 24,
  BDA_MOD_ANALOG_AMPLITUDE = 25,
  BDA_MOD_ANALOG_FREQUENCY = 26,
  BDA_MOD_8PSK = 27,
  BDA_MOD_RF = 28,
  BDA_MOD_16APSK = 29,
  BDA_MOD_32APSK = 30,
  BDA_MOD_NBC_QPSK = 31,
  BDA_MOD_NBC_8PSK = 32,
  BDA_MOD_DIRECTV = 33,
  BDA_MOD_ISDB_T_TMCC = 34,
  BDA_MOD_ISDB_S_TMCC = 35,
  BDA_MOD_MAX = 36,
};

enum SpectralInversion : std::int32_t {
  BDA_SPECTRAL_INVERSION_NOT_SET = -1,
  BDA_SPECTRAL_INVERSION_NOT_DEFINED = 0,
  BDA_SPECTRAL_INVERSION_AUTOMATIC = 1,
  BDA_SPECTRAL_INVERSION_NORMAL = 2,
  BDA_SPECTRAL_INVERSION_INVERTED = 3,
  BDA_SPECTRAL_INVERSION_MAX = 4,
};
#endif

// The interfaces of ZorTunedex: what a host includes. Together with station_blocks.h this is the
// whole public face.
//
// Conventions of every method, unless its comment says otherwise:
// - The result is S_OK. A null out-pointer is answered E_POINTER. When a call fails, what the
//   out-pointers name stays untouched.
// - An interface pointer that is handed out carries one reference, which the caller releases.
// - A BSTR that is handed out is a fresh copy, which the caller frees with SysFreeString; a text
//   that was never set comes out null. A BSTR that is handed in is copied; null stores null.
// - BOOL is 32-bit, 0 or 1 unless said otherwise. Indexes are 1-based unless said otherwise.
// - Where no memory is left for a text, a ComError carrying E_OUTOFMEMORY is raised. Loading,
//   saving and opening answer or raise it: part of a list never passes for the whole.
// - Objects may be called from any thread, one at a time; only reference counts are atomic, and the
//   channel list locks the methods that say so.
// - The order of the methods is the order of their slots behind the three of IUnknown, and is
//   fixed.
#pragma once

#include "platform/com.h"
#include "platform/interface_uuid.h"

/// Tells the header that an IDL compiler makes of ZorTunedex.idl that its declarations are here.
#define ZORTUNEDEX_INTERFACES
#ifndef __IZorTunedex_INTERFACE_DEFINED__  // where that header came first, they are there

// ---------------------------------------------------------------------------------------------
// Enumerations. All are 32-bit signed.

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

// ---------------------------------------------------------------------------------------------
// Records

/// How a station is tuned. `pbInformation` is the station block of `InputSignal`'s type: its layout
/// and size are in station_blocks.h, its memory comes from CoTaskMemAlloc.
struct _StationTuneInfo {
  InputSignalType InputSignal;
  LONG lCountry;          ///< country code, the host's
  LONG lPhysicalChannel;  ///< RF channel; this is the record's channel number
  DWORD dwFrequency;      ///< in the host's unit; stored unchanged
  LONG lOffsetFreq;       ///< in the host's unit
  LONG lTSID;             ///< transport stream identifier
  DWORD cbInformation;    ///< bytes of the block
  BYTE* pbInformation;    ///< null: no block
};
static_assert(sizeof(_StationTuneInfo) == 40);

// ---------------------------------------------------------------------------------------------
// Identifiers

inline constexpr CLSID CLSID_ZorTunedex = {
    0xD4FDC473, 0xB225, 0x4746, {0x99, 0x83, 0x06, 0x5F, 0x8F, 0x21, 0xD7, 0x98}};
inline constexpr GUID LIBID_ZORTUNEDEXLib = {
    0xB63ADC9E, 0x1200, 0x4E8C, {0x95, 0xF7, 0xBC, 0x44, 0xEB, 0x0C, 0xDD, 0x14}};
inline constexpr IID IID_IZorTunedex = {
    0xD68DEB38, 0xCC68, 0x4BCF, {0x97, 0x57, 0xED, 0xD6, 0xFF, 0x66, 0xF2, 0x7E}};
inline constexpr IID IID_IChannelInfo = {
    0x3584EA46, 0xF4B3, 0x4D80, {0x9D, 0x59, 0x63, 0x72, 0x97, 0x7C, 0x88, 0xA0}};
inline constexpr IID IID_IChannelInfoMgr = {
    0xFF376EE5, 0xB768, 0x40CF, {0x9F, 0x72, 0x12, 0x8D, 0xD1, 0x30, 0x58, 0x4A}};
inline constexpr IID IID_ISatelliteInfo = {
    0x678F0641, 0xA164, 0x49B2, {0x86, 0xC0, 0x5B, 0x26, 0x9C, 0x54, 0xE5, 0x47}};
inline constexpr IID IID_ISatelliteInfoMgr = {
    0x25965562, 0x4302, 0x4466, {0xA5, 0x69, 0x7A, 0x45, 0x16, 0x20, 0xA4, 0xBB}};
inline constexpr IID IID_ITransponderInfo = {
    0x0823766E, 0x9D78, 0x4C9A, {0xA1, 0xBB, 0x8F, 0xB5, 0xBE, 0x79, 0x7B, 0x1E}};
inline constexpr IID IID_ITransponderInfoMgr = {
    0xA4807474, 0x3D36, 0x413E, {0xB4, 0x97, 0xFD, 0xD7, 0x23, 0x3B, 0xDD, 0x14}};
inline constexpr IID IID_ILNBInfo = {
    0xAC27B5D0, 0xA7A1, 0x4D86, {0x9A, 0x60, 0xCE, 0x71, 0xD8, 0x32, 0x71, 0x50}};
inline constexpr IID IID_ILNBInfoMgr = {
    0x303C56DC, 0x22C2, 0x47BC, {0xBA, 0xAA, 0x39, 0x7D, 0x24, 0x5B, 0x17, 0xB3}};
inline constexpr IID IID_IDishSatInfo = {
    0x2B02C9F4, 0xA2F3, 0x436E, {0x80, 0xF5, 0xAA, 0xA9, 0x24, 0x83, 0x8D, 0xD7}};
inline constexpr IID IID_IDishSatInfoMgr = {
    0x6364EAFD, 0x2DBE, 0x4434, {0xB4, 0x2F, 0x46, 0x70, 0x5F, 0xA6, 0xCE, 0x63}};

// ---------------------------------------------------------------------------------------------
// Channels

/// One channel: its place in its list, its names and marks, and its station.
struct IChannelInfo : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* pSignalType) = 0;
  /// Stores any value and marks the record dirty. The station stays as it is.
  virtual HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType SignalType) = 0;
  /// Analogue and FM: ServiceAll. ATSC, DVB-S, DVB-T, T-DMB: from the block's service type; E_FAIL
  /// when there is no block. DVB-H: E_FAIL. Every other type, one-segment among them: S_OK, and the
  /// value is left as it was.
  virtual HRESULT STDMETHODCALLTYPE GetServiceType(EServiceType* pServiceType) = 0;
  /// E_NOTIMPL: a service type follows from the station block.
  virtual HRESULT STDMETHODCALLTYPE SetServiceType(EServiceType ServiceType) = 0;
  /// The station's physical channel.
  virtual HRESULT STDMETHODCALLTYPE GetChannelNo(UINT* pnChannelNo) = 0;
  /// Stores the number, marks the record dirty and answers E_NOTIMPL all the same.
  virtual HRESULT STDMETHODCALLTYPE SetChannelNo(UINT nChannelNo) = 0;
  /// E_FAIL for the index 0xFFFFFFFF.
  virtual HRESULT STDMETHODCALLTYPE GetChannelIndex(UINT* pnIndex) = 0;
  /// Stores the index, marks the record dirty and answers E_NOTIMPL all the same.
  virtual HRESULT STDMETHODCALLTYPE SetChannelIndex(UINT nIndex) = 0;
  /// The name in the station block. E_FAIL without a block, for a signal type without a name place,
  /// and when the block ends before it.
  virtual HRESULT STDMETHODCALLTYPE GetChannelName(BSTR* pbstrName) = 0;
  /// Writes the name into the station block, cut at the block's end on a character boundary.
  /// E_INVALIDARG for null or empty; E_FAIL as above, and for T-DMB.
  virtual HRESULT STDMETHODCALLTYPE SetChannelName(BSTR bstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetChannelDspName(BSTR* pbstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetChannelDspName(BSTR bstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetChannelFreq(DWORD* pdwFreq) = 0;
  /// S_FALSE, and nothing happens, for the value that is already stored.
  virtual HRESULT STDMETHODCALLTYPE SetChannelFreq(DWORD dwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetChannelOffsetFreq(LONG* plFreq) = 0;
  /// S_FALSE, and nothing happens, for the value that is already stored.
  virtual HRESULT STDMETHODCALLTYPE SetChannelOffsetFreq(LONG lFreq) = 0;
  /// Zeroes the caller's record and fills it with a copy of the station; the caller frees
  /// `pbInformation` with CoTaskMemFree and must not pass a record that still owns a block. S_OK
  /// also when there is no station: the record is then zero.
  virtual HRESULT STDMETHODCALLTYPE GetStationInfo(_StationTuneInfo* pStationInfo) = 0;
  /// Copies the caller's record, who keeps its own block. The new block has the size of this
  /// record's signal type: at most that many bytes are taken, the rest is zero; `InputSignal`
  /// becomes this record's. An empty display name is filled from the station. S_OK also when the
  /// record's signal type has no block: the station is then zero.
  virtual HRESULT STDMETHODCALLTYPE SetStationInfo(_StationTuneInfo* pStationInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetFavor(UINT* pnFavor) = 0;
  /// Any non-zero value marks a favourite.
  virtual HRESULT STDMETHODCALLTYPE SetFavor(UINT nFavor) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetLock(BOOL* pbLock) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetLock(BOOL bLock) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDirty(BOOL* pbDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(BOOL bDirty) = 0;
  /// DVB-S and DVB-T: the conditional access value of the block as it stands; others 0.
  virtual HRESULT STDMETHODCALLTYPE IsScrambled(BOOL* pbScrambled) = 0;
  /// DVB-S and DVB-T: 1 when the block counts DSM-CC and MHP AIT streams, else 0; others 0.
  virtual HRESULT STDMETHODCALLTYPE GetMhp(BOOL* pbHasmhp) = 0;
};

/// The channels of one signal type, in order.
struct IChannelInfoMgr : public IUnknown {
  /// Does nothing.
  virtual HRESULT STDMETHODCALLTYPE Open() = 0;
  /// Lets go of the element the list was loaded from, then empties the list.
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  /// Releases every channel and clears the list's dirty flag. A list that was loaded from an
  /// element also removes that element's channels.
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
  /// Adds the channels of an XML element and keeps the element. `riid` is IID_IXMLDOMNode or
  /// IID_IXMLDOMElement, else E_NOTIMPL; null: E_INVALIDARG. An element that cannot be read is left
  /// out; the result is that of the last one.
  virtual HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) = 0;
  /// Writes every channel into an XML element, checked as for Load; the result is that of the last
  /// channel. Clears the dirty flags of the list and of what was written.
  virtual HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* pSignalType) = 0;
  /// The channels that are there keep theirs.
  virtual HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType SignalType) = 0;
  /// A new channel of the list's signal type. It is not added.
  virtual HRESULT STDMETHODCALLTYPE CreateChannelInfo(IChannelInfo** ppChanInfo) = 0;
  /// Puts the channel in front of the first one whose index is not smaller, else at the end.
  /// Nothing is renumbered, and nothing keeps the same channel from being added twice. Locks.
  virtual HRESULT STDMETHODCALLTYPE AddChannelInfo(IChannelInfo* pChannelInfo) = 0;
  /// Takes the channel out, releases one reference of it whether or not it was there, and numbers
  /// the rest 1, 2, 3, ... A caller must not remove what the list does not hold: the reference that
  /// goes is then its own. Locks.
  virtual HRESULT STDMETHODCALLTYPE RemoveChannelInfo(IChannelInfo* pChannelInfo) = 0;
  /// How many channels have a service type in the mask. A channel that names none is judged by the
  /// one before it, the first such one as ServiceAll. Locks.
  virtual HRESULT STDMETHODCALLTYPE GetChannelCount(DWORD dwServiceTypeEnum, UINT* pnCount) = 0;
  /// First channel with the number; E_FAIL when there is none. Locks.
  virtual HRESULT STDMETHODCALLTYPE GetChannelInfoByNo(UINT nChannelNo,
                                                       IChannelInfo** ppChannelInfo) = 0;
  /// First channel with the stored index; E_FAIL when there is none. Locks.
  virtual HRESULT STDMETHODCALLTYPE GetChannelInfoByIndex(UINT nChannelIndex,
                                                          IChannelInfo** ppChannelInfo) = 0;
  /// First channel with the same station, compared by the list's signal type: analogue the physical
  /// channel; FM the frequency; ATSC physical, major and minor channel; DVB-S TSID, ONID, service
  /// and symbol rate; DVB-T and DVB-H TSID, ONID and service; T-DMB service and component index;
  /// one-segment the block's physical channel. E_FAIL when there is none. The caller keeps its
  /// block. Locks.
  virtual HRESULT STDMETHODCALLTYPE GetChannelInfoByStation(_StationTuneInfo* pStationInfo,
                                                            IChannelInfo** ppChannelInfo) = 0;
  /// Index of the next channel before the one with index `nChannelIndex` (1..n, else E_INVALIDARG)
  /// that has a service type in the mask and, with `bAvailableOnly`, is a favourite. With
  /// `bLooping` the search goes on from the end through the whole list. E_FAIL when there is none
  /// or the list has fewer than two channels.
  virtual HRESULT STDMETHODCALLTYPE FindPreChannel(UINT nChannelIndex, UINT* pnPreChannelIndex,
                                                   DWORD dwServiceTypeEnum, BOOL bAvailableOnly,
                                                   BOOL bLooping) = 0;
  /// The same forwards; `nChannelIndex` 0 starts at the first channel and never loops, above n is
  /// E_INVALIDARG.
  virtual HRESULT STDMETHODCALLTYPE FindNextChannel(UINT nChannelIndex, UINT* pnNextChannelIndex,
                                                    DWORD dwServiceTypeEnum, BOOL bAvailableOnly,
                                                    BOOL bLooping) = 0;
  /// The list's flag, or 1 when a channel is dirty.
  virtual HRESULT STDMETHODCALLTYPE GetDirty(BOOL* pbDirty) = 0;
  /// The list's own flag only.
  virtual HRESULT STDMETHODCALLTYPE SetDirty(BOOL bDirty) = 0;
  /// Moves the channel with one index to another and numbers the list afresh. E_INVALIDARG for
  /// equal indexes, E_FAIL when there is no channel with the old one.
  virtual HRESULT STDMETHODCALLTYPE MoveChannel(UINT nOldChannelIndex, UINT nNewChannelIndex) = 0;
  /// SortChannelByNo: the array becomes ascending by number in any case; descending numbers it from
  /// its end, so the highest number gets index 1. SortChannelBySrvType: by service type, within it
  /// by number, in three passes. Else E_FAIL.
  virtual HRESULT STDMETHODCALLTYPE SortChannel(ESortType SortType, BOOL bAscending) = 0;
};

// ---------------------------------------------------------------------------------------------
// Satellites
//
// Records: getters copy a field, setters store their argument unchecked and answer S_OK. No setter
// marks its record dirty: in these lists only list operations and loading change dirty flags, and
// saving the dish list clears them.
//
// Lists: they are members of their owners (the database, a satellite) and live as long as those,
// whatever references a host holds: hold the owner while you use the list. What follows is common
// to all four and not said again:
// - Open does exactly what Close does: it lets go of the element that the list was loaded from,
//   then empties the list and clears its dirty flag. S_OK.
// - Clear releases every record and clears the dirty flag. A list that still holds its element also
//   removes the records' elements from it. S_OK.
// - Load adds the records of an XML element and keeps the element; what is in the list stays.
//   `riid` is IID_IXMLDOMNode or IID_IXMLDOMElement, else E_NOTIMPL; null, or a node that is not of
//   this library's documents: E_INVALIDARG. An element that cannot be read is left out. The result
//   is that of the last step taken for the last element, S_OK when there is none. Loaded records
//   have the indexes 0, 1, 2, ... and are not dirty; nor is the list.
// - Save checks its arguments as Load does.
// - Create... makes a record with one reference, which is not added.
// - Add... puts the record in front of the first one whose index is not smaller (unsigned), else at
//   the end, adds a reference and marks the list dirty. The same record can be added twice. A
//   failing GetIndex is answered as it is. E_POINTER for null.
// - Remove... takes the first occurrence out, releases one reference of the record whether or not
//   it was there (a caller must not remove what the list does not hold: the reference that goes is
//   then its own), numbers what is left 1, 2, 3, ... (from 1, although loading numbers from 0),
//   marks the list dirty, and removes all the records' elements from the element that it holds.
//   E_POINTER for null.
// - Get...ByIndex compares stored indexes; the first match is handed out with a reference. E_FAIL
//   when there is none.
// - Texts compare whole and case-sensitively; null equals empty. Windows compares as the user's
//   locale does, Linux code unit by code unit.
// - SetDirty stores what it is given, in the list alone.

/// One transponder. Setters never mark it dirty.
struct ITransponderInfo : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetName(BSTR* pbstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetName(BSTR bstrName) = 0;
  /// In the unit of the satellite file; stored unchanged.
  virtual HRESULT STDMETHODCALLTYPE GetCarrierFrequency(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCarrierFrequency(DWORD dwFreq) = 0;
  /// This and the three other tuning values start at their NOT_SET value, -1.
  virtual HRESULT STDMETHODCALLTYPE GetPolarisation(Polarisation* pPolarisation) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetPolarisation(Polarisation polarisation) = 0;
  /// In the unit of the satellite file; stored unchanged.
  virtual HRESULT STDMETHODCALLTYPE GetSymbolRate(LONG* plSymbolRate) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSymbolRate(LONG lSymbolRate) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetInnerFECRate(BinaryConvolutionCodeRate* pFECRate) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetInnerFECRate(BinaryConvolutionCodeRate FECRate) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetModulationType(ModulationType* pModulation) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetModulationType(ModulationType Modulation) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSpectralInversion(SpectralInversion* pInversion) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSpectralInversion(SpectralInversion Inversion) = 0;
  /// 0 until the list numbers it.
  virtual HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// The transponders of one band of one satellite.
struct ITransponderInfoMgr : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Open() = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
  /// Reads the Transponder elements of a band element, in the order of the file.
  virtual HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) = 0;
  /// E_NOTIMPL where the arguments pass: the catalogue is never written.
  virtual HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateTransponderInfo(ITransponderInfo** ppInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddTransponderInfo(ITransponderInfo* pInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveTransponderInfo(ITransponderInfo* pInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTransponderCount(UINT* pnCount) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTransponderInfoByIndex(UINT nIndex,
                                                              ITransponderInfo** ppInfo) = 0;
  /// Takes the text `*pName` over and frees it on every path, found or not, without clearing the
  /// caller's variable: pass a text that is no longer needed, and do not use it afterwards. E_FAIL
  /// when there is no transponder of that name. E_POINTER for a null `pName`, too.
  virtual HRESULT STDMETHODCALLTYPE GetTransponderInfoByName(BSTR* pName,
                                                             ITransponderInfo** ppInfo) = 0;
  /// E_NOTIMPL: transponders keep their order.
  virtual HRESULT STDMETHODCALLTYPE MoveTransponder(UINT nOldIndex, UINT nNewIndex) = 0;
  /// E_NOTIMPL for every sort type.
  virtual HRESULT STDMETHODCALLTYPE SortTransponder(ESortType SortType, BOOL bAscending) = 0;
  /// The list's flag, or 1 when a transponder is dirty.
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// One satellite with its two transponder lists. Setters never mark it dirty.
struct ISatelliteInfo : public IUnknown {
  /// Writes the low 16 bits of `*pWestLongitude` only (0 for east, else west): pass a variable that
  /// was zeroed. The longitude is in the unit of the satellite file. E_POINTER when either is null.
  virtual HRESULT STDMETHODCALLTYPE GetOrbitalPosition(BOOL* pWestLongitude, LONG* pLongitude) = 0;
  /// Keeps the low 16 bits of `WestLongitude`: 0x10000 is stored as east.
  virtual HRESULT STDMETHODCALLTYPE SetOrbitalPosition(BOOL WestLongitude, LONG Longitude) = 0;
  /// -1: not set.
  virtual HRESULT STDMETHODCALLTYPE GetAzimuth(LONG* plAzimuth) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetAzimuth(LONG lAzimuth) = 0;
  /// -1: not set.
  virtual HRESULT STDMETHODCALLTYPE GetElevation(LONG* plElevation) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetElevation(LONG lElevation) = 0;
  /// 0 until the list numbers it.
  virtual HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetName(BSTR* pbstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetName(BSTR bstrName) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetID(BSTR* pbstrID) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetID(BSTR bstrID) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRegion(ESatRegion* pRegion) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetRegion(ESatRegion Region) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDivision(ESatDivision* pDivision) = 0;
  /// The list of SatFreqBand_CBand or SatFreqBand_KuBand. The result is the list's new reference
  /// count, 2 or more, in place of S_OK; test for a negative result. SatFreqBand_KaBand: E_NOTIMPL;
  /// any other: E_FAIL. The list lives as long as its satellite, so hold that.
  virtual HRESULT STDMETHODCALLTYPE GetTransponderMgr(ESatFreqBand SatFreqBand,
                                                      ITransponderInfoMgr** ppMgr) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDivision(ESatDivision Division) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  /// Does not reach the transponder lists.
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// The satellite catalogue.
struct ISatelliteInfoMgr : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Open() = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
  /// Reads the Satellite elements of a table with their transponders. The list follows the "index"
  /// attributes of the file: each satellite goes in front of the first one whose index is not
  /// smaller, and then takes its position in the file as its index, which later ones are compared
  /// with. The last step for the last satellite is its Ku-band, so a table that ends with a
  /// satellite without one answers E_FAIL although everything was loaded.
  virtual HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) = 0;
  /// E_NOTIMPL where the arguments pass: the catalogue is never written.
  virtual HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateSatelliteInfo(ISatelliteInfo** ppInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddSatelliteInfo(ISatelliteInfo* pInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveSatelliteInfo(ISatelliteInfo* pInfo) = 0;
  /// Satellites carry no country, so any country code but 0 counts none. With a region, the
  /// satellites of that region, whatever the division; without one, those of the division; with
  /// neither, all.
  virtual HRESULT STDMETHODCALLTYPE GetSatCount(DWORD dwCountryCode, ESatRegion Region,
                                                ESatDivision Division, UINT* pnCount) = 0;
  /// The three filters are ignored.
  virtual HRESULT STDMETHODCALLTYPE GetSatInfoByIndex(UINT nIndex, DWORD dwCountryCode,
                                                      ESatRegion Region, ESatDivision Division,
                                                      ISatelliteInfo** ppInfo) = 0;
  /// The caller keeps `Name`. E_FAIL when there is no satellite of that name.
  virtual HRESULT STDMETHODCALLTYPE GetSatInfoByName(BSTR Name, ISatelliteInfo** ppInfo) = 0;
  /// Takes the text `*pID` over and frees it on every path, found or not, without clearing the
  /// caller's variable: pass a text that is no longer needed, and do not use it afterwards. E_FAIL
  /// when there is no satellite with that ID. E_POINTER for a null `pID`, too.
  virtual HRESULT STDMETHODCALLTYPE GetSatInfoByID(BSTR* pID, ISatelliteInfo** ppInfo) = 0;
  /// E_NOTIMPL: satellites keep their order.
  virtual HRESULT STDMETHODCALLTYPE MoveSat(UINT nOldIndex, UINT nNewIndex) = 0;
  /// E_NOTIMPL for every sort type.
  virtual HRESULT STDMETHODCALLTYPE SortSat(ESortType SortType, BOOL bAscending) = 0;
  /// The list's flag, or 1 when a satellite is dirty. Transponder lists are not asked.
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// One type of low-noise block converter. Setters never mark it dirty.
struct ILNBInfo : public IUnknown {
  /// 0 until the list numbers it.
  virtual HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetType(BSTR* pbstrType) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetType(BSTR bstrType) = 0;
  /// Local oscillator of the low band, in the unit of the satellite file.
  virtual HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD dwFreq) = 0;
  /// Local oscillator of the high band.
  virtual HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHighFreq(DWORD dwFreq) = 0;
  /// Where reception changes from the low to the high band.
  virtual HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD dwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// The known LNB types.
struct ILNBInfoMgr : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Open() = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
  /// Reads the LNB elements of a table, in the order of the file.
  virtual HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) = 0;
  /// E_NOTIMPL where the arguments pass: the catalogue is never written.
  virtual HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateLNBInfo(ILNBInfo** ppInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddLNBInfo(ILNBInfo* pInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveLNBInfo(ILNBInfo* pInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetLNBCount(UINT* pnCount) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetLNBInfoByIndex(UINT nIndex, ILNBInfo** ppInfo) = 0;
  /// The caller keeps `Type`. E_FAIL when there is no such type.
  virtual HRESULT STDMETHODCALLTYPE GetLNBInfoByType(BSTR Type, ILNBInfo** ppInfo) = 0;
  /// The list's own flag: LNB types are not asked.
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// One satellite as received on one dish. Setters never mark it dirty.
struct IDishSatInfo : public IUnknown {
  /// Position within the dish; 0 until the list numbers it.
  virtual HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) = 0;
  /// The ID of the satellite, as ISatelliteInfo::GetID has it.
  virtual HRESULT STDMETHODCALLTYPE GetID(BSTR* pbstrID) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetID(BSTR bstrID) = 0;
  /// The band as the settings file names it.
  virtual HRESULT STDMETHODCALLTYPE GetBand(BSTR* pbstrBand) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetBand(BSTR bstrBand) = 0;
  /// Local oscillators of the LNB in use and its switch frequency, in the unit of the catalogue.
  virtual HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD dwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHighFreq(DWORD dwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD* pdwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD dwFreq) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

/// The satellites of up to four dishes; dish numbers are 0 to 3, and a greater one is E_FAIL,
/// behind the check for null.
struct IDishSatInfoMgr : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Open() = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  /// All four dishes; of the element that it holds, the SAT children of all four.
  virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
  /// Reads the SAT elements of DISH_1 to DISH_4 of a settings element. A dish without an element is
  /// empty.
  virtual HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) = 0;
  /// Writes every assignment into the element with the same ID, band and frequencies, or into a new
  /// one at the dish's end. Nothing is deleted: an assignment that was changed without a removal
  /// leaves its old element, and one whose ID or band holds an apostrophe gets a new element every
  /// time. E_FAIL for a dish whose element is missing; the result is that of the last dish that has
  /// assignments. Clears the dirty flags of the list and of what was written.
  virtual HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateDishSatInfo(IDishSatInfo** ppInfo) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) = 0;
  /// Numbers the one dish; of the element that the list holds, the SAT children of all four go.
  virtual HRESULT STDMETHODCALLTYPE RemoveDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) = 0;
  /// The out-pointer comes first, here and below.
  virtual HRESULT STDMETHODCALLTYPE GetDishSatCount(UINT* pnCount, UINT DishNum) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDishSatInfoByIndex(IDishSatInfo** ppInfo, UINT DishNum,
                                                          UINT nIndex) = 0;
  /// The list's own flag: assignments are not asked.
  virtual HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) = 0;
};

// ---------------------------------------------------------------------------------------------
// The database

/// The channel database of one data directory.
struct IZorTunedex : public IUnknown {
  /// Opens the directory for a country (telephone country code) and a signal type, and loads that
  /// type's channels. For DVB-S the dish assignments are loaded too; the catalogue waits for
  /// LoadSatInfoFromFile. A missing or unreadable ChanInfo.xml is an empty database. E_INVALIDARG
  /// for a null or empty directory and for one that does not exist; nothing changes then. Opening
  /// again without Close keeps the lists and adds the file's channels once more.
  virtual HRESULT STDMETHODCALLTYPE Open(BSTR bstrDir, DWORD dwCountryCode,
                                         InputSignalType SignalType) = 0;
  /// Closes the files and empties the lists. Nothing is saved.
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  /// The list of a signal type. E_FAIL before Open and for a type that has none (composite,
  /// S-Video, AM radio, unknown).
  virtual HRESULT STDMETHODCALLTYPE GetChannelInfoMgr(InputSignalType SignalType,
                                                      IChannelInfoMgr** ppChannelInfoMgr) = 0;
  /// Reads ChanInfo.xml and adds the channels of the opened country and signal type to their list,
  /// which is not cleared first. E_FAIL before Open.
  virtual HRESULT STDMETHODCALLTYPE LoadChannelFromFile() = 0;
  /// Writes every changed list to ChanInfo.xml. E_FAIL when nothing was changed: nothing is written
  /// then. The plain form answers S_OK also when the file could not be written; the pre-formatted
  /// form answers E_FAIL. The old file stays in both cases.
  virtual HRESULT STDMETHODCALLTYPE SaveChannelToFile() = 0;
  /// `pStorageType` is not checked for null.
  virtual HRESULT STDMETHODCALLTYPE GetStorageType(EStorageType* pStorageType) = 0;
  /// StorageXML or StoragePreFmtXML; the next save writes the file in that form even when nothing
  /// else changed. StorageEncryptXML and StorageSQLlite: E_NOTIMPL; anything else: E_FAIL.
  virtual HRESULT STDMETHODCALLTYPE SetStorageType(EStorageType StorageType) = 0;
  /// DVB-S only, else S_FALSE. Reads SatelliteInfo.xml and replaces the satellite and LNB lists by
  /// what it holds. A file that is missing or cannot be read: E_FAIL, and the lists stay as they
  /// were.
  virtual HRESULT STDMETHODCALLTYPE LoadSatInfoFromFile() = 0;
  /// E_NOTIMPL: the lists of the catalogue do not write themselves, and the file stays as it is.
  /// E_FAIL before the file was loaded.
  virtual HRESULT STDMETHODCALLTYPE SaveSatInfoToFile() = 0;
  /// The list, with a reference. The result is its new reference count in place of S_OK; test for a
  /// negative result. The out-pointer is not checked for null. The list lives as long as the
  /// database. This holds for the LNB and dish lists below, too.
  virtual HRESULT STDMETHODCALLTYPE GetSatelliteInfoMgr(ISatelliteInfoMgr** ppSatelliteInfoMgr) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetLNBInfoMgr(ILNBInfoMgr** ppLNBInfoMgr) = 0;
  /// Reads UserSettings.xml; a missing or unreadable file is one with four empty dishes. DVB-S: the
  /// dish list is replaced by what the file holds. E_FAIL before Open.
  virtual HRESULT STDMETHODCALLTYPE LoadUserSettingsFromFile() = 0;
  /// Writes the dish list into UserSettings.xml. The first failure ends it, and nothing is written
  /// then; that the file could not be written is not reported. A file that could not be read is
  /// kept beside it first. E_FAIL before Open.
  virtual HRESULT STDMETHODCALLTYPE SaveUserSettingsToFile() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDishSatInfoMgr(IDishSatInfoMgr** ppDishSatInfoMgr) = 0;

  // Presets and customer lists of one-segment reception, from PreSetChannelInfo.xml. Areas and
  // sub-areas are addressed by the numbers that the file gives them, 0, 1, 2, ... by custom; their
  // places do not matter. The area whose number is the count of areas less one holds the customer's
  // lists, each a sub-area. The country of the presets is always 81, whatever was given to Open.
  // Open loads the file when the signal type is one-segment; Close leaves it loaded. A file that is
  // missing, cannot be read or holds no presets is answered E_FAIL where nothing else is said, and
  // so is a database that was never opened for one-segment.

  /// Reads the file again; what was changed in memory and not saved is dropped, the selection
  /// included. S_FALSE when it is missing or cannot be read, E_FAIL for another signal type than
  /// one-segment and before Open. Open ignores the result.
  virtual HRESULT STDMETHODCALLTYPE LoadPresetOneSegChannelInfo() = 0;
  /// E_INVALIDARG for null; 0 is stored with E_FAIL.
  virtual HRESULT STDMETHODCALLTYPE GetAreaCount(LONG* plArea) = 0;
  /// `pArea`: at least 260 bytes, filled with narrow text (ANSI code page) of up to 259 bytes and
  /// its terminator; a longer name is cut on a character boundary. E_INVALIDARG for null, E_POINTER
  /// for an area that the file does not have; S_FALSE, nothing written, where it has no name.
  virtual HRESULT STDMETHODCALLTYPE GetAreaNameByIndex(LONG lArea, CHAR* pArea) = 0;
  /// 0 for an area that the file does not have. E_INVALIDARG for null; 0 is stored with E_FAIL.
  virtual HRESULT STDMETHODCALLTYPE GetSubAreaCount(LONG lArea, LONG* plSubArea) = 0;
  /// As GetAreaNameByIndex, of a sub-area.
  virtual HRESULT STDMETHODCALLTYPE GetSubAreaNameByIndex(LONG lArea, LONG lSubArea,
                                                          CHAR* pSubArea) = 0;
  /// Opened for one-segment: replaces the channels of the one-segment list by those of the sub-area
  /// and writes ChanInfo.xml at once. S_OK also when the sub-area is unknown (the list is then
  /// empty, and so is the channel set in the file) and when the file could not be written; E_FAIL
  /// before Open, after Close, and where PreSetChannelInfo.xml holds no presets: the list then
  /// stays. PreSetChannelInfo.xml is read again before, so that GetArea answers what that file
  /// holds, and the list is bound to the sub-area after it: see docs/hosting.md before you clear or
  /// change the list. Opened for another type: remembers the two numbers and touches no list.
  /// E_FAIL, or S_OK when presets are still loaded from an earlier Open for one-segment: the next
  /// deletion of a customer list then writes the selection into their file.
  virtual HRESULT STDMETHODCALLTYPE SetArea(LONG lArea, LONG lSubArea) = 0;
  /// The selection that the file holds, 0 where it does not say; without presets the one that
  /// SetArea was given last. Of both numbers the low 16 bits alone. E_INVALIDARG for a null
  /// pointer, else always S_OK.
  virtual HRESULT STDMETHODCALLTYPE GetArea(LONG* plArea, LONG* plSubArea) = 0;
  /// Stores the opened country's one-segment channels as the customer list `lIndex`, names it
  /// `szSubArea` (narrow text) and writes PreSetChannelInfo.xml. The channels are those that were
  /// loaded or saved last, not unsaved changes of the list. Channels of an old list are replaced by
  /// their index, others stay. A new list must ask for the next free number, the count of the
  /// customer's lists; with another one an empty list gets that number, in memory alone.
  /// The result is no result code of the store but a reference count, normally 0: it is not told
  /// whether anything was stored. E_FAIL before Open and after Close. Nothing happens for a null
  /// name and for another signal type.
  virtual HRESULT STDMETHODCALLTYPE SaveCustomerChannelList(LONG lIndex, const CHAR* szSubArea) = 0;
  /// Removes a customer list, numbers the others 0, 1, 2, ... and writes the file; the result is
  /// that of writing, and a failure leaves the old file. The list may be gone from memory all the
  /// same: LoadPresetOneSegChannelInfo brings it back. S_FALSE, and nothing happens, when there is
  /// no such list.
  virtual HRESULT STDMETHODCALLTYPE DeleteCustomerChannelList(LONG lIndex) = 0;
  /// A new list with the channels of a sub-area, of signal type one-segment; empty for an unknown
  /// sub-area. E_POINTER for null; null is stored with E_FAIL, and with S_OK when no memory is left
  /// for a list. The database holds the list until the next call. It is bound to the sub-area in
  /// memory as the selected one is; clearing it takes the channels out there.
  virtual HRESULT STDMETHODCALLTYPE GetPresetChannelMgr(LONG lArea, LONG lSubArea,
                                                        IChannelInfoMgr** ppChannelMgr) = 0;
};

// ---------------------------------------------------------------------------------------------
// What __uuidof names: the class and the interfaces

ZORTUNEDEX_UUID(class, ZorTunedex, CLSID, "D4FDC473-B225-4746-9983-065F8F21D798");
ZORTUNEDEX_UUID(struct, IZorTunedex, IID, "D68DEB38-CC68-4BCF-9757-EDD6FF66F27E");
ZORTUNEDEX_UUID(struct, IChannelInfo, IID, "3584EA46-F4B3-4D80-9D59-6372977C88A0");
ZORTUNEDEX_UUID(struct, IChannelInfoMgr, IID, "FF376EE5-B768-40CF-9F72-128DD130584A");
ZORTUNEDEX_UUID(struct, ISatelliteInfo, IID, "678F0641-A164-49B2-86C0-5B269C54E547");
ZORTUNEDEX_UUID(struct, ISatelliteInfoMgr, IID, "25965562-4302-4466-A569-7A451620A4BB");
ZORTUNEDEX_UUID(struct, ITransponderInfo, IID, "0823766E-9D78-4C9A-A1BB-8FB5BE797B1E");
ZORTUNEDEX_UUID(struct, ITransponderInfoMgr, IID, "A4807474-3D36-413E-B497-FDD7233BDD14");
ZORTUNEDEX_UUID(struct, ILNBInfo, IID, "AC27B5D0-A7A1-4D86-9A60-CE71D8327150");
ZORTUNEDEX_UUID(struct, ILNBInfoMgr, IID, "303C56DC-22C2-47BC-BAAA-397D245B17B3");
ZORTUNEDEX_UUID(struct, IDishSatInfo, IID, "2B02C9F4-A2F3-436E-80F5-AAA924838DD7");
ZORTUNEDEX_UUID(struct, IDishSatInfoMgr, IID, "6364EAFD-2DBE-4434-B42F-46705FA6CE63");

#endif

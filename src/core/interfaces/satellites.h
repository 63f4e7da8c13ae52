// Satellites, and the lists of them. What holds for all methods stands in core/interfaces.h.
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
#pragma once

#include "core/interfaces/enumerations.h"
#include "platform/com.h"

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

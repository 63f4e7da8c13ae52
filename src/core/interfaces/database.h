// The database. What holds for all methods stands in core/interfaces.h.
#pragma once

#include "core/interfaces/channels.h"
#include "core/interfaces/enumerations.h"
#include "core/interfaces/satellites.h"
#include "platform/com.h"

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
  /// Writes every changed list to ChanInfo.xml. E_FAIL, with the file as it was, when nothing was
  /// changed, and when in no changed list the last channel could be written (it has no station, or
  /// its type has no form in the file). The dirty flags are cleared then too: mend or remove that
  /// channel, call SetDirty(1) on the list and save again. The plain form answers S_OK also when
  /// the file could not be written; the pre-formatted form answers E_FAIL. The old file stays in
  /// both cases.
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

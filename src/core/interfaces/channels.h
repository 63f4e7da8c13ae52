// Channels and the lists of them. What holds for all methods stands in core/interfaces.h.
#pragma once

#include "core/interfaces/enumerations.h"
#include "core/interfaces/station.h"
#include "platform/com.h"

/// One channel: its place in its list, its names and marks, and its station.
struct IChannelInfo : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* pSignalType) = 0;
  /// Stores any value and marks the record dirty. The station stays as it is.
  virtual HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType SignalType) = 0;
  /// Analogue and FM: ServiceAll. ATSC, DVB-C, DVB-S, DVB-T, T-DMB: from the block's service type;
  /// E_FAIL without one. A record of DVB-C has one only when its type was changed after its station
  /// was set. DVB-H: E_FAIL. Every other type, one-segment among them: S_OK, and the
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
  /// channel. Clears the dirty flags of the list and of every channel that got an element, also
  /// where writing it failed. Channels are found by their index: of several with the same one the
  /// last in the list is kept. A channel without a station, or of a type that the file has no form
  /// for, leaves one more empty element each time.
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
  /// one-segment the block's physical channel. What stands in the block counts only inside of
  /// `cbInformation`: a probe that ends before it matches nothing, and so does a record. E_FAIL
  /// when there is none. The caller keeps its block. Locks.
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
  /// its end, so the highest number gets index 1. SortChannelBySrvType: by number, then by service
  /// type, then by a comparison of both that is no order; what comes out is in the order of
  /// neither, and is the same on both targets. It is numbered from its front. Else E_FAIL.
  virtual HRESULT STDMETHODCALLTYPE SortChannel(ESortType SortType, BOOL bAscending) = 0;
};

#pragma once

#include <cstddef>
#include <mutex>
#include <vector>

#include "channels/channel_filter.h"
#include "channels/channel_keys.h"
#include "core/gen_com_obj.h"
#include "core/keep_alive.h"
#include "platform/com_ptr.h"
#include "platform/critical_section.h"
#include "platform/dom.h"
#include "records/record_list.h"
#include "xml/lookup/channel_element_index.h"

/// The ordered channels of one signal type. Records may be the host's own, and may call back into
/// the list: no method holds a place in the array across a call of a record, and every method keeps
/// the list and the record that it asks alive.
class CChanInfoMgr : public CGenComObj<CChanInfoMgr, IChannelInfoMgr> {
 public:
  CChanInfoMgr() = default;
  ~CChanInfoMgr() override;

  /// Takes the channels of another list in place of its own, and its element where it has one.
  /// Never fails.
  void TakeOver(CChanInfoMgr& other);

  HRESULT STDMETHODCALLTYPE Open() override;
  HRESULT STDMETHODCALLTYPE Close() override;
  HRESULT STDMETHODCALLTYPE Clear() override;
  HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) override;
  HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) override;
  HRESULT STDMETHODCALLTYPE GetSignalType(InputSignalType* pSignalType) override;
  HRESULT STDMETHODCALLTYPE SetSignalType(InputSignalType SignalType) override;
  HRESULT STDMETHODCALLTYPE CreateChannelInfo(IChannelInfo** ppChanInfo) override;
  HRESULT STDMETHODCALLTYPE AddChannelInfo(IChannelInfo* pChannelInfo) override;
  HRESULT STDMETHODCALLTYPE RemoveChannelInfo(IChannelInfo* pChannelInfo) override;
  HRESULT STDMETHODCALLTYPE GetChannelCount(DWORD dwServiceTypeEnum, UINT* pnCount) override;
  HRESULT STDMETHODCALLTYPE GetChannelInfoByNo(UINT nChannelNo,
                                               IChannelInfo** ppChannelInfo) override;
  HRESULT STDMETHODCALLTYPE GetChannelInfoByIndex(UINT nChannelIndex,
                                                  IChannelInfo** ppChannelInfo) override;
  HRESULT STDMETHODCALLTYPE GetChannelInfoByStation(_StationTuneInfo* pStationInfo,
                                                    IChannelInfo** ppChannelInfo) override;
  HRESULT STDMETHODCALLTYPE FindPreChannel(UINT nChannelIndex, UINT* pnPreChannelIndex,
                                           DWORD dwServiceTypeEnum, BOOL bAvailableOnly,
                                           BOOL bLooping) override;
  HRESULT STDMETHODCALLTYPE FindNextChannel(UINT nChannelIndex, UINT* pnNextChannelIndex,
                                            DWORD dwServiceTypeEnum, BOOL bAvailableOnly,
                                            BOOL bLooping) override;
  HRESULT STDMETHODCALLTYPE GetDirty(BOOL* pbDirty) override;
  HRESULT STDMETHODCALLTYPE SetDirty(BOOL bDirty) override;
  HRESULT STDMETHODCALLTYPE MoveChannel(UINT nOldChannelIndex, UINT nNewChannelIndex) override;
  HRESULT STDMETHODCALLTYPE SortChannel(ESortType SortType, BOOL bAscending) override;

 private:
  using Channels = RecordList<ChannelTraits>;
  using Record = Channels::Record;
  using Loaded = std::vector<Channels::Loaded>;

  /// Holds the list's lock, and the list itself: a record may release it meanwhile.
  class Locked {
   public:
    explicit Locked(CChanInfoMgr& list) : m_self(&list), m_guard(list.m_lock) {}

   private:
    KeepAlive m_self;
    std::lock_guard<CriticalSection> m_guard;
  };

  /// Index of the first channel that the filter accepts among `count`, from `first` in steps.
  HRESULT Scan(ChannelFilter& filter, std::size_t first, std::size_t count, int step,
               UINT* index) const;
  void NumberChannels(Numbering from);
  void DropElements() const;
  HRESULT LoadFrom(const dom::Element& set);
  HRESULT LoadOne(const dom::Element& channel, Loaded& loaded);
  HRESULT SaveTo(const dom::Element& set);
  HRESULT SaveRecords(xml::ChannelElementIndex& elements);

  Channels m_channels;
  InputSignalType m_signalType = InputSignalUnknown;
  BOOL m_dirty = 0;
  dom::Element m_element;
  CriticalSection m_lock;
};

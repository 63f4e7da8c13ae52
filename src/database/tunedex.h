#pragma once

#include <mutex>
#include <string>

#include "channels/chan_info_mgr_group.h"
#include "core/aggregatable.h"
#include "core/interfaces.h"
#include "database/preset_list.h"
#include "platform/bstr.h"
#include "satellite/dish_sat_info_mgr.h"
#include "satellite/lnb_info_mgr.h"
#include "satellite/satellite_info_mgr.h"
#include "xml/files/xml_chan_parser.h"
#include "xml/files/xml_preset_channel_parser.h"
#include "xml/files/xml_sat_parser.h"
#include "xml/files/xml_usr_conf_parser.h"

/// The channel database of one data directory: joins paths, and drives documents and lists in a
/// fixed order. The methods are described at the interface.
class CTunedex final : public Aggregatable<IZorTunedex> {
 public:
  /// Creates a database, alone or as part of `outer`, and asks it for `riid`.
  static HRESULT CreateInstance(IUnknown* outer, REFIID riid, void** ppv);

  HRESULT STDMETHODCALLTYPE Open(BSTR bstrDir, DWORD dwCountryCode,
                                 InputSignalType SignalType) override;
  HRESULT STDMETHODCALLTYPE Close() override;
  HRESULT STDMETHODCALLTYPE GetChannelInfoMgr(InputSignalType SignalType,
                                              IChannelInfoMgr** ppChannelInfoMgr) override;
  HRESULT STDMETHODCALLTYPE LoadChannelFromFile() override;
  HRESULT STDMETHODCALLTYPE SaveChannelToFile() override;
  HRESULT STDMETHODCALLTYPE GetStorageType(EStorageType* pStorageType) override;
  HRESULT STDMETHODCALLTYPE SetStorageType(EStorageType StorageType) override;
  HRESULT STDMETHODCALLTYPE LoadSatInfoFromFile() override;
  HRESULT STDMETHODCALLTYPE SaveSatInfoToFile() override;
  HRESULT STDMETHODCALLTYPE GetSatelliteInfoMgr(ISatelliteInfoMgr** ppSatelliteInfoMgr) override;
  HRESULT STDMETHODCALLTYPE GetLNBInfoMgr(ILNBInfoMgr** ppLNBInfoMgr) override;
  HRESULT STDMETHODCALLTYPE LoadUserSettingsFromFile() override;
  HRESULT STDMETHODCALLTYPE SaveUserSettingsToFile() override;
  HRESULT STDMETHODCALLTYPE GetDishSatInfoMgr(IDishSatInfoMgr** ppDishSatInfoMgr) override;
  HRESULT STDMETHODCALLTYPE LoadPresetOneSegChannelInfo() override;
  HRESULT STDMETHODCALLTYPE GetAreaCount(LONG* plArea) override;
  HRESULT STDMETHODCALLTYPE GetAreaNameByIndex(LONG lArea, CHAR* pArea) override;
  HRESULT STDMETHODCALLTYPE GetSubAreaCount(LONG lArea, LONG* plSubArea) override;
  HRESULT STDMETHODCALLTYPE GetSubAreaNameByIndex(LONG lArea, LONG lSubArea,
                                                  CHAR* pSubArea) override;
  HRESULT STDMETHODCALLTYPE SetArea(LONG lArea, LONG lSubArea) override;
  HRESULT STDMETHODCALLTYPE GetArea(LONG* plArea, LONG* plSubArea) override;
  HRESULT STDMETHODCALLTYPE SaveCustomerChannelList(LONG lIndex, const CHAR* szSubArea) override;
  HRESULT STDMETHODCALLTYPE DeleteCustomerChannelList(LONG lIndex) override;
  HRESULT STDMETHODCALLTYPE GetPresetChannelMgr(LONG lArea, LONG lSubArea,
                                                IChannelInfoMgr** ppChannelMgr) override;

 private:
  explicit CTunedex(IUnknown* outer);

  std::string PathOf(const char* fileName) const;

  // What the methods of these names do. They raise lack of memory, and then have loaded nothing:
  // documents and lists are what they were.
  HRESULT OpenDirectory(WideView directory, DWORD countryCode, InputSignalType signalType);
  HRESULT OpenDocuments();
  HRESULT LoadChannels();
  HRESULT SaveChannels();
  HRESULT LoadSatellites();
  HRESULT LoadUserSettings();
  HRESULT LoadPresets();
  HRESULT SelectArea(LONG lArea, LONG lSubArea);

  // Made with the object and taken by no method: a host that shares a database between threads
  // serialises its calls.
  std::recursive_mutex m_mutex;
  InputSignalType m_signalType = InputSignalUnknown;
  std::basic_string<OLECHAR> m_directory;  // ends in a separator once it is set
  DWORD m_countryCode = 0;
  EStorageType m_storageType = StorageXML;
  CXmlChanParser m_channelFile;
  CXmlSatParser m_satelliteFile;
  CXmlUsrConfParser m_settingsFile;
  CXmlPreSetChannelParser m_presetFile;
  // Behind the documents: lists let go of their elements first.
  CChanInfoMgrGroup m_channelLists;
  CSatelliteInfoMgr m_satellites;
  CLNBInfoMgr m_lnbs;
  CDishSatInfoMgr m_dishes;
  PresetList m_presetList;
};

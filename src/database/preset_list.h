#pragma once

#include "channels/chan_info_mgr.h"
#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "xml/files/xml_preset_channel_parser.h"

/// The preset list that was handed out last: it is held until the next one is asked for.
class PresetList {
 public:
  PresetList() = default;
  PresetList(const PresetList&) = delete;
  PresetList& operator=(const PresetList&) = delete;
  ~PresetList() { Drop(); }

  /// A new list of a sub-area's channels, empty for an unknown one. Null with S_OK where no list
  /// can be made; null on failure, and then nothing is held. E_POINTER for a null pointer, and the
  /// last list stays.
  HRESULT Make(const CXmlPreSetChannelParser& file, LONG lArea, LONG lSubArea,
               IChannelInfoMgr** ppChannelMgr);

 private:
  void Drop();

  ComPtr<CChanInfoMgr> m_list;
};

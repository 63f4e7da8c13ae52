#include "channels/channel_loading.h"

#include <new>

#include "channels/chan_info.h"
#include "platform/com_error.h"
#include "xml/channel_codec.h"

HRESULT LoadChannel(const dom::Element& element, InputSignalType signalType,
                    ComPtr<IChannelInfo>& record) {
  ComPtr<IChannelInfo> made;
  HRESULT hr = RaiseLackOfMemory(CChanInfo::CreateInstance(made.Receive()));
  if (FAILED(hr)) return hr;
  made->SetSignalType(signalType);
  hr = RaiseLackOfMemory(xml::CodeChannel(element, made.Get(), xml::Direction::Read));
  if (FAILED(hr)) return hr;
  if (!CChanInfo::From(made.Get())->HasStation()) throw std::bad_alloc();
  record = std::move(made);
  return S_OK;
}

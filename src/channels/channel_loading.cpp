#include "channels/channel_loading.h"

#include "channels/chan_info.h"
#include "xml/channel_codec.h"

HRESULT LoadChannel(const dom::Element& element, InputSignalType signalType,
                    ComPtr<IChannelInfo>& record) {
  ComPtr<IChannelInfo> made;
  HRESULT hr = CChanInfo::CreateInstance(made.Receive());
  if (FAILED(hr)) return hr;
  made->SetSignalType(signalType);
  hr = xml::CodeChannel(element, made.Get(), xml::Direction::Read);
  // A record of ours fails to be read for this reason alone.
  if (hr == E_FAIL) return E_OUTOFMEMORY;
  if (FAILED(hr)) return hr;
  if (CChanInfo::From(made.Get())->ViewStation().bytes.empty()) return E_OUTOFMEMORY;
  record = std::move(made);
  return S_OK;
}

#include "channels/channel_loading.h"

#include "channels/chan_info.h"
#include "core/station_blocks.h"
#include "platform/com_error.h"
#include "xml/channel_reader.h"

HRESULT LoadChannel(const dom::Element& element, InputSignalType signalType,
                    ComPtr<IChannelInfo>& record) {
  // Types without a block have no form in the file either.
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  if (layout == nullptr) return E_NOTIMPL;
  ComPtr<IChannelInfo> made;
  const HRESULT hr = RaiseLackOfMemory(CChanInfo::CreateInstance(made.Receive()));
  if (FAILED(hr)) return hr;
  made->SetSignalType(signalType);
  StationInfo station;
  xml::ReadStation(element, made.Get(), signalType, *layout, station.Receive());
  CChanInfo::From(made.Get())->TakeStation(station);
  record = std::move(made);
  return S_OK;
}

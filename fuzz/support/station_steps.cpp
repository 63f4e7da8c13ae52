#include "support/station_steps.h"

#include "core/station_blocks.h"
#include "support/fuzz.h"

namespace {

constexpr std::size_t kBlockSizes[] = {0, 3, 92, 100, 528, 1096, 2484, 2580, 2784, 4716, 5000};

void SetType(Input& input, IChannelInfo* channel) {
  Require(channel->SetSignalType(static_cast<InputSignalType>(input.Byte())) == S_OK);
}

// The count may say more than the record takes, as long as what it takes is there.
void SetStation(Input& input, IChannelInfo* channel) {
  const std::size_t size = kBlockSizes[input.Below(static_cast<UINT>(std::size(kBlockSizes)))];
  std::vector<BYTE> block = input.Bytes(input.Below(32));
  block.resize(size, input.Byte());
  InputSignalType signalType = InputSignalUnknown;
  channel->GetSignalType(&signalType);
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  const bool isWhole = layout == nullptr || block.size() >= layout->size;
  _StationTuneInfo station = {};
  station.InputSignal = static_cast<InputSignalType>(input.Byte());
  station.lPhysicalChannel = input.Byte();
  station.cbInformation = isWhole ? 0xFFFFFFFF : static_cast<DWORD>(block.size());
  station.pbInformation = input.Below(8) == 0 ? nullptr : block.data();
  Require(channel->SetStationInfo(&station) == S_OK);
}

void SetName(Input& input, IChannelInfo* channel) {
  const Bstr name = input.Text(input.Number() % 3000);
  const HRESULT hr = channel->SetChannelName(name.Get());
  Require(hr == S_OK || hr == E_FAIL || (hr == E_INVALIDARG && name.IsEmpty()));
}

void GetTexts(IChannelInfo* channel) {
  Bstr text;
  const HRESULT hr = channel->GetChannelName(text.Receive());
  Require(hr == S_OK || hr == E_FAIL);
  Require(channel->GetChannelDspName(text.Receive()) == S_OK);
}

void GetMarks(IChannelInfo* channel) {
  EServiceType serviceType = ServiceUnknown;
  BOOL flag = 0;
  const HRESULT hr = channel->GetServiceType(&serviceType);
  Require(hr == S_OK || hr == E_FAIL);
  Require(channel->IsScrambled(&flag) == S_OK);
  Require(channel->GetMhp(&flag) == S_OK);
  Require(flag == 0 || flag == 1);
}

}  // namespace

void StepStation(Input& input, IChannelInfo* channel) {
  switch (input.Below(6)) {
    case 0:
      return SetType(input, channel);
    case 1:
      return SetStation(input, channel);
    case 2:
      return SetName(input, channel);
    case 3:
      Require(channel->SetChannelDspName(input.Text(input.Byte()).Get()) == S_OK);
      return;
    case 4:
      return GetTexts(channel);
    default:
      return GetMarks(channel);
  }
}

void RequireSoundStation(IChannelInfo* channel) {
  _StationTuneInfo station = {};
  InputSignalType signalType = InputSignalUnknown;
  Require(channel->GetSignalType(&signalType) == S_OK);
  Require(channel->GetStationInfo(&station) == S_OK);
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  Require((station.pbInformation != nullptr) == (layout != nullptr));
  if (layout == nullptr) return;
  Require(station.InputSignal == signalType && station.cbInformation <= layout->size);
  // Every byte of the type's block is there.
  UINT sum = 0;
  for (UINT i = 0; i < layout->size; ++i) sum += station.pbInformation[i];
  Require(sum <= layout->size * 255);
  CoTaskMemFree(station.pbInformation);
}

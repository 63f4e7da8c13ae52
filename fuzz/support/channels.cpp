// Walking, changing and describing channel lists.
#include <array>

#include "core/station_blocks.h"
#include "support/database.h"
#include "support/fuzz.h"

namespace {

using station_blocks::Field;
using station_blocks::Source;

constexpr DWORD kAllServices = 0xFFFFFFFF;
constexpr UINT kLastIndex = 0xFFFFFFFE;  // the one above it is none

struct Station : _StationTuneInfo {
  explicit Station(IChannelInfo* channel) : _StationTuneInfo() {
    Require(channel->GetStationInfo(this) == S_OK);
  }
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;
  ~Station() { CoTaskMemFree(pbInformation); }
};

std::string Hex(const void* bytes, std::size_t count) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const BYTE* byte = static_cast<const BYTE*>(bytes); count-- > 0; ++byte) {
    hex += {kDigits[*byte >> 4], kDigits[*byte & 15]};
  }
  return hex;
}

std::string Shortened(const Bstr& text) {
  constexpr std::size_t kUnits = 20;
  const WideView view = text.View().substr(0, kUnits);
  return Hex(view.data(), view.size() * sizeof(OLECHAR));
}

void WalkChannel(IChannelInfo* channel) {
  Bstr text;
  channel->GetChannelName(text.Receive());
  channel->GetChannelDspName(text.Receive());
  EServiceType serviceType = ServiceUnknown;
  channel->GetServiceType(&serviceType);
  BOOL flag = 0;
  channel->IsScrambled(&flag);
  channel->GetMhp(&flag);
  Require(flag == 0 || flag == 1);
  const Station station(channel);
}

// One value of those that a row of the file's layout names.
std::string DescribeSource(IChannelInfo* channel, const Station& station, const Field& field) {
  UINT number = 0;
  BOOL lock = 0;
  Bstr text;
  switch (field.source) {
    case Source::Name:
    case Source::DisplayName:
      // Bytes that are no text of the code page are not kept in base64.
      if (field.form == station_blocks::Form::Base64) return {};
      if (field.source == Source::Name)
        channel->GetChannelName(text.Receive());
      else
        channel->GetChannelDspName(text.Receive());
      return Shortened(text);
    case Source::Index:
      channel->GetChannelIndex(&number);
      return std::to_string(number);
    case Source::PhysicalChannel:
      return std::to_string(station.lPhysicalChannel);
    case Source::Frequency:
      return std::to_string(station.dwFrequency);
    case Source::OffsetFrequency:
      return std::to_string(station.lOffsetFreq);
    case Source::TransportStream:
      return std::to_string(station.lTSID);
    case Source::Favorite:
      channel->GetFavor(&number);
      return std::to_string(number);
    case Source::Lock:
      channel->GetLock(&lock);
      return std::to_string(lock);
    default:
      return {};
  }
}

std::string DescribeChannel(IChannelInfo* channel, bool withStation) {
  InputSignalType signalType = InputSignalUnknown;
  channel->GetSignalType(&signalType);
  const station_blocks::Layout* layout = station_blocks::Find(signalType);
  Require(layout != nullptr);
  const Station station(channel);
  std::string line;
  for (const Field& field : layout->channel) line += DescribeSource(channel, station, field) + " ";
  if (withStation) {
    const std::string_view block(reinterpret_cast<const char*>(station.pbInformation),
                                 station.cbInformation);
    line += std::to_string(std::hash<std::string_view>()(block));
  }
  return line + "\n";
}

std::string Describe(const ComPtr<IChannelInfoMgr>& list, bool withStations) {
  std::string text;
  ComPtr<IChannelInfo> channel;
  for (UINT index = 1; list->GetChannelInfoByIndex(index, channel.Receive()) == S_OK; ++index) {
    text += DescribeChannel(channel.Get(), withStations);
  }
  return text;
}

void ChangeChannel(IChannelInfo* channel, UINT number) {
  channel->SetFavor(number % 3);
  channel->SetLock(static_cast<BOOL>(number % 2));
  channel->SetChannelFreq(4000000000U + number);
  channel->SetChannelOffsetFreq(-5);
  channel->SetChannelNo(number * 7 % 11);
  channel->SetChannelDspName(Bstr(u"<\"&'\t\u20AC\U0001F4FA>").Get());
  if (number % 2 == 0) channel->SetChannelName(Bstr(std::u16string(number, u'\u00DC')).Get());
  Station station(channel);
  Require(channel->SetStationInfo(&station) == S_OK);
}

}  // namespace

void WalkChannels(const ComPtr<IChannelInfoMgr>& list) {
  UINT count = 0;
  UINT index = 0;
  BOOL dirty = 0;
  ComPtr<IChannelInfo> channel;
  for (const DWORD mask : {kAllServices, DWORD{ServiceDigitalTV}, DWORD{0}}) {
    Require(list->GetChannelCount(mask, &count) == S_OK);
  }
  Require(list->GetDirty(&dirty) == S_OK);
  for (UINT place = 0; list->FindNextChannel(place, &index, kAllServices, 0, 0) == S_OK; ++place) {
    list->FindPreChannel(place, &count, kAllServices, place % 2, 1);
    if (list->GetChannelInfoByIndex(index, channel.Receive()) != S_OK) continue;
    WalkChannel(channel.Get());
    Station station(channel.Get());
    ComPtr<IChannelInfo> found;
    list->GetChannelInfoByStation(&station, found.Receive());
    list->GetChannelInfoByNo(static_cast<UINT>(station.lPhysicalChannel), found.Receive());
  }
}

void ChangeChannels(const ComPtr<IChannelInfoMgr>& list) {
  ComPtr<IChannelInfo> channel;
  for (UINT number = 0; number < 3; ++number) {
    Require(list->CreateChannelInfo(channel.Receive()) == S_OK);
    std::array<BYTE, 5000> block = {};
    block.fill(static_cast<BYTE>('A' + number));
    _StationTuneInfo station = {};
    station.cbInformation = number * 500;
    station.pbInformation = block.data();
    channel->SetStationInfo(&station);
    ChangeChannel(channel.Get(), number);
    channel->SetChannelIndex(number);
    Require(list->AddChannelInfo(channel.Get()) == S_OK);
  }
  Require(list->RemoveChannelInfo(channel.Get()) == S_OK);
  list->MoveChannel(1, 2);
  Require(list->SortChannel(SortChannelBySrvType, 0) == S_OK);
  Require(list->SortChannel(SortChannelByNo, 1) == S_OK);
}

std::string DescribeChannels(const ComPtr<IChannelInfoMgr>& list) { return Describe(list, false); }

std::string DescribeStations(const ComPtr<IChannelInfoMgr>& list) { return Describe(list, true); }

// A channel that was seen gets the last index, so that the next one with its own is found. A list
// of one channel cannot be walked: there is one more, at the end.
std::string DescribeEach(const ComPtr<IChannelInfoMgr>& list) {
  std::string text;
  UINT index = 0;
  ComPtr<IChannelInfo> channel;
  Require(list->CreateChannelInfo(channel.Receive()) == S_OK);
  channel->SetChannelIndex(kLastIndex);
  Require(list->AddChannelInfo(channel.Get()) == S_OK);
  for (UINT place = 0; list->FindNextChannel(place, &index, kAllServices, 0, 0) == S_OK; ++place) {
    Require(list->GetChannelInfoByIndex(index, channel.Receive()) == S_OK);
    text += DescribeChannel(channel.Get(), true);
    channel->SetChannelIndex(kLastIndex);
  }
  return text;
}

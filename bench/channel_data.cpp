#include "bench/channel_data.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include "bench/check.h"
#include "core/station_blocks.h"
#include "platform/bstr.h"
#include "platform/com_ptr.h"

namespace bench {
namespace {

using station_blocks::kDvbs;

constexpr unsigned kPcrPid = 255;
constexpr unsigned kNetworkId = 1;
constexpr unsigned kRunning = 4;
constexpr char kDiseqc[] = "E01038F0";

template <typename... Arguments>
void Append(std::string& text, const char* format, Arguments... arguments) {
  char buffer[1024];
  const int length = std::snprintf(buffer, sizeof(buffer), format, arguments...);
  Check(length > 0 && static_cast<std::size_t>(length) < sizeof(buffer), "text is too long");
  text.append(buffer, static_cast<std::size_t>(length));
}

void AppendStream(std::string& text, const char* element, const Stream& stream) {
  Append(text, "<%s type=\"%u\" pid=\"%u\" lang=\"%u\"/>", element, stream.type, stream.pid,
         stream.language);
}

void AppendStreams(std::string& text, const ChannelData& channel) {
  text +=
      "<ElementStreams videoStream=\"0\" numOfVideoStreams=\"1\" audioStream=\"0\" "
      "numOfAudioStreams=\"2\" teletextStream=\"0\" numOfTeletextStreams=\"1\" "
      "subtitleStream=\"0\" numOfSubtitleStreams=\"1\" numOfDsmccStreams=\"0\" "
      "numOfMhpAitStreams=\"0\">";
  AppendStream(text, "VideoStream", channel.video);
  for (const Stream& stream : channel.audio) AppendStream(text, "AudioStream", stream);
  AppendStream(text, "TeletextStream", channel.teletext);
  AppendStream(text, "SubtitleStream", channel.subtitle);
  text += "</ElementStreams>";
}

void AppendChannel(std::string& text, const ChannelData& channel) {
  Append(text,
         "<Channel name=\"%s\" nameDisplay=\"%s\" index=\"%u\" physicalChannel=\"%u\" "
         "networkName=\"%s\" freq=\"%u\" freqOffset=\"0\" serviceType=\"%u\" serviceID=\"%u\" "
         "PcrPID=\"%u\" TSID=\"%u\" ONID=\"%u\" CA=\"%u\" favor=\"%u\" lock=\"0\" "
         "runningStatus=\"%u\">",
         channel.name.c_str(), channel.name.c_str(), channel.index, channel.index,
         channel.network.c_str(), channel.frequency, channel.serviceType, channel.serviceId,
         kPcrPid, channel.transportStream, kNetworkId, channel.access, channel.favorite, kRunning);
  AppendStreams(text, channel);
  Append(text,
         "<SatelliteParams polarisation=\"%s\" westPosition=\"0\" azimuth=\"1800\" "
         "elevation=\"321\" orbitalPosition=\"192\" symbolRate=\"%u\" innerFECRate=\"5/6\" "
         "modulation=\"QPSK\" spectralInversion=\"automatic\" DiSEqC_Msg=\"%s\" "
         "LNB_LowFreq=\"9750000\" LNB_HighFreq=\"10600000\" LNB_SwitchFreq=\"11700000\"/>"
         "</Channel>",
         channel.vertical ? "LinearV" : "LinearH", channel.symbolRate, kDiseqc);
}

void SetNumber(std::vector<BYTE>& block, station_blocks::Rows<station_blocks::Field> rows,
               std::string_view attribute, std::uint32_t value) {
  const station_blocks::Field* field = station_blocks::FindField(rows, attribute);
  station_blocks::Store(block.data() + field->offset, field->width, value);
}

void SetText(std::vector<BYTE>& block, station_blocks::Rows<station_blocks::Field> rows,
             std::string_view attribute, std::string_view value) {
  std::memcpy(block.data() + station_blocks::OffsetOf(rows, attribute), value.data(), value.size());
}

void AddStream(std::vector<BYTE>& block, std::size_t position, const Stream& stream) {
  const station_blocks::StreamList& list = kDvbs.lists.first[position];
  BYTE* count = block.data() + list.countOffset;
  const std::uint32_t before = station_blocks::Fetch(count, 4);
  BYTE* entry = block.data() + list.offset + before * list.entrySize;
  station_blocks::Store(entry, 1, stream.type);
  station_blocks::Store(entry + 2, 2, stream.pid);
  station_blocks::StoreLanguage(entry + 4, stream.language);
  station_blocks::Store(count, 4, before + 1);
}

void SetSatellite(std::vector<BYTE>& block, const ChannelData& channel) {
  const auto set = [&](std::string_view attribute, std::uint32_t value) {
    SetNumber(block, kDvbs.satelliteParams, attribute, value);
  };
  set("polarisation", static_cast<std::uint32_t>(channel.vertical ? BDA_POLARISATION_LINEAR_V
                                                                  : BDA_POLARISATION_LINEAR_H));
  set("azimuth", 1800);
  set("elevation", 321);
  set("orbitalPosition", 192);
  set("symbolRate", channel.symbolRate);
  set("innerFECRate", BDA_BCC_RATE_5_6);
  set("modulation", BDA_MOD_QPSK);
  set("spectralInversion", BDA_SPECTRAL_INVERSION_AUTOMATIC);
  SetText(block, kDvbs.satelliteParams, "DiSEqC_Msg", kDiseqc);
  set("LNB_LowFreq", 9750000);
  set("LNB_HighFreq", 10600000);
  set("LNB_SwitchFreq", 11700000);
}

void AddChannel(IChannelInfoMgr* list, const ChannelData& channel) {
  std::vector<BYTE> block = MakeBlock(channel);
  _StationTuneInfo station = {};
  station.InputSignal = InputSignalDVBSatellite;
  station.lPhysicalChannel = static_cast<LONG>(channel.index);
  station.dwFrequency = channel.frequency;
  station.lTSID = static_cast<LONG>(channel.transportStream);
  station.cbInformation = static_cast<DWORD>(block.size());
  station.pbInformation = block.data();
  ComPtr<IChannelInfo> record;
  Check(list->CreateChannelInfo(record.Receive()) == S_OK, "a channel could not be made");
  record->SetChannelIndex(channel.index);
  record->SetStationInfo(&station);
  record->SetFavor(channel.favorite);
  Check(list->AddChannelInfo(record.Get()) == S_OK, "a channel could not be added");
}

}  // namespace

ChannelData MakeChannelData(UINT index) {
  char name[32];
  std::snprintf(name, sizeof(name), "Television %06u HD", index);
  const unsigned pid = 256 + index % 1000 * 7;
  const bool isRadio = index % 10 == 0;
  return {
      .index = index,
      .name = name,
      .network = "Network of transponder " + std::to_string(index / 8),
      .frequency = 10700000 + index / 8 % 1000 * 2000,
      .serviceType = isRadio ? 2U : 1U,
      .serviceId = 1 + index % 60000,
      .transportStream = 1000 + index / 8 % 60000,
      .access = index % 3 == 0,
      .favorite = index % 8 == 0,
      .vertical = index % 2 == 0,
      .symbolRate = index % 4 == 0 ? 27500U : 22000U,
      .video = {27, pid, 0},
      .audio = {{{3, pid + 1, 0x745}, {6, pid + 2, 0x5E7}}},
      .teletext = {6, pid + 3, 0x745},
      .subtitle = {6, pid + 4, 0x745},
  };
}

std::vector<BYTE> MakeBlock(const ChannelData& channel) {
  std::vector<BYTE> block(kDvbs.size);
  SetText(block, kDvbs.channel, "name", channel.name);
  SetText(block, kDvbs.channel, "networkName", channel.network);
  SetNumber(block, kDvbs.channel, "serviceType", channel.serviceType);
  SetNumber(block, kDvbs.channel, "serviceID", channel.serviceId);
  SetNumber(block, kDvbs.channel, "PcrPID", kPcrPid);
  SetNumber(block, kDvbs.channel, "ONID", kNetworkId);
  SetNumber(block, kDvbs.channel, "CA", channel.access);
  SetNumber(block, kDvbs.channel, "runningStatus", kRunning);
  AddStream(block, 0, channel.video);
  for (const Stream& stream : channel.audio) AddStream(block, 1, stream);
  AddStream(block, 2, channel.teletext);
  AddStream(block, 3, channel.subtitle);
  SetSatellite(block, channel);
  return block;
}

std::string MakeChannelFile(UINT count) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>"
      "<Country name=\"Germany\" countrycode=\"49\">"
      "<ChannelSet type=\"DVB-Satellite\" inputSignalType=\"64\">";
  for (UINT index = 1; index <= count; ++index) AppendChannel(text, MakeChannelData(index));
  return text + "</ChannelSet></Country></CHANNELTABLE>\r\n";
}

void FillList(IChannelInfoMgr* list, UINT count) {
  for (UINT index = 1; index <= count; ++index) AddChannel(list, MakeChannelData(index));
}

}  // namespace bench

#include "bench/preset_data.h"

#include <unistd.h>

#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "bench/check.h"
#include "bench/workspace.h"

namespace bench {
namespace {

std::string Quoted(const char* name, UINT value) {
  return " " + std::string(name) + "=\"" + std::to_string(value) + "\"";
}

void AddChannel(std::string& xml, UINT index) {
  xml +=
      "<Channel name=\"T25lIFNlZ21lbnQ=\" nameDisplay=\"T25lIFNlZ21lbnQ=\"" +
      Quoted("index", index) + Quoted("physicalChannel", 13 + index % 40) +
      " favor=\"0\" lock=\"0\"" + Quoted("Frequency", 473143 + 6000 * (index % 40)) +
      Quoted("NetworkID", 32736 - index) + Quoted("ServiceID", 1408 + 8 * index) +
      "><ElementStreams videoStream=\"0\" numOfVideoStreams=\"1\" audioStream=\"0\" "
      "numOfAudioStreams=\"1\" teletextStream=\"0\" numOfTeletextStreams=\"0\" "
      "subtitleStream=\"0\" numOfSubtitleStreams=\"0\" dsmccStream=\"0\" "
      "numOfDsmccStreams=\"0\" numOfMhpAitStreams=\"0\"><VideoStream type=\"27\" pid=\"1409\" "
      "lang=\"0\"/><AudioStream type=\"15\" pid=\"1411\" lang=\"0\"/></ElementStreams></Channel>";
}

void AddChannels(std::string& xml, UINT count) {
  for (UINT index = 1; index <= count; ++index) AddChannel(xml, index);
}

std::string SetOf(const std::string& content) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE><Country name=\"Japan\" "
         "countrycode=\"81\"><ChannelSet type=\"ISDBT_OneSeg\" inputSignalType=\"176\">" +
         content + "</ChannelSet></Country></CHANNELTABLE>\r\n";
}

std::string Presets(UINT channels) {
  std::string xml;
  for (LONG area = 0; area < kPresetAreas; ++area) {
    const auto number = static_cast<UINT>(area);
    xml += "<Area" + Quoted("AreaIndex", number) + " name=\"Area\">";
    const LONG count = area == kPresetAreas - 1 ? kCustomerLists : kPresetsInAnArea;
    for (UINT subArea = 0; subArea < static_cast<UINT>(count); ++subArea) {
      xml += "<SubArea" + Quoted("SubAreaIndex", subArea) + " name=\"Sub-area\">";
      AddChannels(xml, channels);
      xml += "</SubArea>";
    }
    xml += "</Area>";
  }
  return SetOf(xml);
}

}  // namespace

const std::filesystem::path& PresetDirectory(UINT channels) {
  static std::map<UINT, TempDirectory> directories;
  const auto [found, isNew] = directories.try_emplace(channels);
  const std::filesystem::path& directory = found->second.Path();
  if (isNew) {
    std::string own;
    AddChannels(own, channels);
    WriteFile(directory / "PreSetChannelInfo.xml", Presets(channels));
    WriteFile(directory / "ChanInfo.xml", SetOf(own));
  }
  return directory;
}

}  // namespace bench

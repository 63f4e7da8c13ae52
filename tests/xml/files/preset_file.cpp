#include "xml/files/preset_file.h"

#include <fstream>
#include <iterator>

#include "channels/channel_loading.h"

namespace {

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) ADD_FAILURE() << "no file " << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

std::string PresetData(const std::string& name) {
  return Contents(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/" + name);
}

std::string SamplePresets() {
  return Contents(std::string(ZORTUNEDEX_SAMPLES) + "/home/PreSetChannelInfo.xml");
}

std::string PresetXml(const std::string& areas) {
  return "<CHANNELTABLE><Country name='Japan' countrycode='81'><ChannelSet type='ISDBT_OneSeg' "
         "inputSignalType='176'>" +
         areas + "</ChannelSet></Country></CHANNELTABLE>";
}

std::string ChannelXml(int index, const std::string& name, int physicalChannel) {
  return "<Channel name='" + name + "' nameDisplay='" + name + "' index='" + std::to_string(index) +
         "' physicalChannel='" + std::to_string(physicalChannel) +
         "' favor='0' lock='0' Frequency='557143' NetworkID='32736' ServiceID='1408'/>";
}

void PresetFile::Load(const std::string& bytes) {
  m_dir.Write(kName, bytes);
  ExpectHr(S_OK, m_parser.Open(m_dir.File(kName)));
  ExpectHr(S_OK, m_parser.Load());
}

std::string PresetFile::SavedTree() const { return Formatted(TextDocument(Saved()).root); }

std::string PresetFile::Tree() {
  dom::Element set;
  ExpectHr(S_OK, m_parser.GetPresetChannelSet(&set));
  return set ? Formatted(set) : std::string();
}

LONG PresetFile::AreaCount() {
  LONG count = -1;
  ExpectHr(S_OK, m_parser.GetAreaCount(&count));
  return count;
}

LONG PresetFile::SubAreaCount(LONG lArea) {
  LONG count = -1;
  ExpectHr(S_OK, m_parser.GetSubAreaCount(lArea, &count));
  return count;
}

std::string PresetFile::AreaName(LONG lArea) {
  CHAR name[260] = "(none)";
  ExpectHr(S_OK, m_parser.GetAreaNameByIndex(lArea, name));
  return name;
}

std::string PresetFile::SubAreaName(LONG lArea, LONG lSubArea) {
  CHAR name[260] = "(none)";
  ExpectHr(S_OK, m_parser.GetSubAreaNameByIndex(lArea, lSubArea, name));
  return name;
}

HRESULT PresetFile::SaveCustomerChannelList(const dom::Element& source, LONG lIndex,
                                            const CHAR* szSubArea) {
  return m_parser.SaveCustomerChannelList(source, lIndex, szSubArea, LoadChannel);
}

ComPtr<IChannelInfoMgr> PresetFile::List(LONG lArea, LONG lSubArea) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, GetPresetChannelMgr(lArea, lSubArea, list.Receive()));
  return list;
}

std::string ChannelsOf(const ComPtr<IChannelInfoMgr>& list) {
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(static_cast<DWORD>(ServiceAll), &count));
  std::string text;
  UINT found = 0;
  for (UINT index = 0; index < 100 && found < count; ++index) {
    ComPtr<IChannelInfo> channel;
    if (FAILED(list->GetChannelInfoByIndex(index, channel.Receive()))) continue;
    UINT number = 0;
    ExpectHr(S_OK, channel->GetChannelNo(&number));
    text += (found++ ? " " : "") + std::to_string(index) + ":" + std::to_string(number);
  }
  EXPECT_EQ(count, found) << "channels below index 100";
  return text;
}

dom::Element SourceOf(const std::string& xml) { return TextDocument(xml).root; }

#include "support/codec.h"

#include <iterator>

#include "channels/chan_info.h"
#include "support/fuzz.h"
#include "xml/codecs/channel_codec.h"
#include "xml/documents/xml_format.h"

namespace {

dom::Element RootOf(const dom::Document& document) {
  dom::Element root;
  Require(document.DocumentElement(root) == S_OK);
  return root;
}

}  // namespace

InputSignalType BlockType(BYTE choice) {
  constexpr InputSignalType kTypes[] = {
      InputSignalAnalogAntenna,  InputSignalFMRadio,
      InputSignalATSCCable,      InputSignalDVBSatellite,
      InputSignalDVBTerrestrial, InputSignalDVBHandheld,
      InputSignalTDMBMobile,     InputSignalISDBTerrestrialOneSeg,
  };
  return kTypes[choice % std::size(kTypes)];
}

ComPtr<IChannelInfo> ReadElement(const dom::Element& element, InputSignalType signalType) {
  ComPtr<IChannelInfo> channel;
  Require(CChanInfo::CreateInstance(channel.Receive()) == S_OK);
  channel->SetSignalType(signalType);
  Require(xml::CodeChannel(element, channel.Get(), xml::Direction::Read) == S_OK);
  return channel;
}

bool HasIndex(IChannelInfo* channel) {
  UINT index = 0;
  return channel->GetChannelIndex(&index) == S_OK;
}

dom::Document WriteElement(IChannelInfo* channel) {
  dom::Document document;
  dom::Element element;
  Require(document.Create() == S_OK && document.CreateElement("Channel", element) == S_OK);
  Require(document.AppendChild(element) == S_OK);
  Require(xml::CodeChannel(element, channel, xml::Direction::Write) == S_OK);
  return document;
}

std::string Describe(const dom::Document& document) {
  std::string text;
  Require(xml::FormatElement(RootOf(document), 0, text) == S_OK);
  return text;
}

void RequireStable(IChannelInfo* channel, InputSignalType signalType) {
  const ComPtr<IChannelInfo> second = ReadElement(RootOf(WriteElement(channel)), signalType);
  const dom::Document written = WriteElement(second.Get());
  const ComPtr<IChannelInfo> third = ReadElement(RootOf(written), signalType);
  Require(Describe(WriteElement(third.Get())) == Describe(written));
}

void RequireSavedIsLoaded(const Scratch& scratch, const dom::Document& document) {
  const std::string path = scratch.File("channel.xml");
  // Characters that XML does not have cannot be saved.
  if (document.Save(path) != S_OK) return;
  dom::Document loaded;
  bool success = false;
  Require(loaded.Create() == S_OK);
  Require(loaded.Load(path, success) == S_OK && success);
  Require(Describe(loaded) == Describe(document));
}

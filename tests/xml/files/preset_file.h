// A preset file in a directory of its own, with its parser.
#pragma once

#include <string>
#include <vector>

#include "database/preset_list.h"
#include "platform/com_ptr.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "support/temp_dir.h"
#include "xml/files/xml_preset_channel_parser.h"

/// Contents of a file of tests/data/presets.
std::string PresetData(const std::string& name);

/// The preset file of the samples.
std::string SamplePresets();

/// The text of a file with these areas in the set where the presets stand.
std::string PresetXml(const std::string& areas);

/// A one-segment channel as the file has it, its names in base64: "One" is "T25l".
std::string ChannelXml(int index, const std::string& name, int physicalChannel);

class PresetFile {
 public:
  static constexpr char kName[] = "PreSetChannelInfo.xml";

  PresetFile() = default;
  explicit PresetFile(const std::string& bytes) { Load(bytes); }

  /// Writes the file and loads it, which must work.
  void Load(const std::string& bytes);
  std::string Saved() const { return m_dir.Read(kName); }
  /// The saved file, one element a line.
  std::string SavedTree() const;
  const TempDir& Files() const { return m_dir; }
  CXmlPreSetChannelParser* operator->() { return &m_parser; }

  /// The channel set in memory, one element a line.
  std::string Tree();
  LONG AreaCount();
  LONG SubAreaCount(LONG lArea);
  std::string AreaName(LONG lArea);
  std::string SubAreaName(LONG lArea, LONG lSubArea);
  /// As a database asks for a list and stores one.
  HRESULT GetPresetChannelMgr(LONG lArea, LONG lSubArea, IChannelInfoMgr** list) {
    return m_list.Make(m_parser, lArea, lSubArea, list);
  }
  HRESULT SaveCustomerChannelList(const dom::Element& source, LONG lIndex, const CHAR* szSubArea);
  ComPtr<IChannelInfoMgr> List(LONG lArea, LONG lSubArea);

 private:
  TempDir m_dir;
  CXmlPreSetChannelParser m_parser;
  PresetList m_list;
};

/// "index:physical channel" of every channel, in list order.
std::string ChannelsOf(const ComPtr<IChannelInfoMgr>& list);

/// The one element below which the channels to be stored stand, from its text.
dom::Element SourceOf(const std::string& xml);

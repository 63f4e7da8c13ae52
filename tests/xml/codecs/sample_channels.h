// One channel of every kind with a value of its own in every field, at places written out here: the
// golden files in tests/data/channels hold the same channels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/fake_channel.h"
#include "support/registry_sandbox.h"
#include "support/temp_dir.h"
#include "xml/files/xml_chan_parser.h"

struct SampleNumber {
  std::size_t offset;
  std::size_t width;
  std::uint32_t value;
};

struct SampleText {
  std::size_t offset;
  const char* text;
};

struct Sample {
  const char* file;  ///< name of its golden files, without form and suffix
  InputSignalType signalType;
  std::size_t blockSize;
  std::vector<SampleNumber> numbers;
  std::vector<SampleText> texts;
  /// Numbers that the file does not bring back.
  std::vector<SampleNumber> lost;
  /// Which values of the record the file has a place for.
  bool hasPhysicalChannel = true;
  bool hasFrequency = true;
  bool hasOffset = false;
  bool hasTransportStream = false;

  static constexpr UINT kIndex = 3;
  static constexpr UINT kFavor = 5;
  static constexpr BOOL kLock = 1;
  static constexpr LONG kPhysicalChannel = 38;
  static constexpr DWORD kFrequency = 3600000000U;
  static constexpr LONG kOffset = -166667;
  static constexpr LONG kTransportStream = 1089;
  static constexpr char kName[] = "Channel Three";
  static constexpr char kDisplayName[] = "The third, displayed";

  /// Gives the record every value of the sample.
  void Fill(FakeChannel& record) const;
  std::vector<BYTE> Block() const;
  /// Checks a record that was read from the sample's file.
  void ExpectReadBack(const FakeChannel& record) const;
};

/// Eight kinds of channel, each once.
const std::vector<Sample>& Samples();

/// A channel file with the set of one signal type in a country of its own.
class SampleFile {
 public:
  explicit SampleFile(InputSignalType type);

  /// Writes the record into its element; the codec's result.
  HRESULT Add(FakeChannel& record);
  /// Saves the file and answers its bytes.
  std::string Save(bool preFormatted);

  dom::Element set;

 private:
  RegistrySandbox m_registry;
  TempDir m_dir;
  CXmlChanParser m_parser;
};

/// The file with the sample as channel 3 and an empty record as channel 2.
std::string SavedSample(const Sample& sample, bool preFormatted);

/// Contents of a file of tests/data/channels.
std::string GoldenFile(const std::string& name);

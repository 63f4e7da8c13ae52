// Lists for the tests of channels.conf.
#pragma once

#include <filesystem>
#include <utility>

#include "kit/interchange/exchange.h"

namespace zortunedex::kit {

/// The sets of the samples that the form holds.
inline constexpr std::pair<DWORD, InputSignalType> kVdrSampleSets[] = {
    {49, InputSignalDVBSatellite},
    {49, InputSignalDVBTerrestrial},
    {1, InputSignalATSCAntenna},
    {1, InputSignalATSCCable}};

struct ChannelTexts {
  std::string name;
  std::string shown = "";
  std::string network = "";
};

/// Adds a channel with values, "serviceID=5 AudioStream[1].pid=33", and texts.
void AddChannel(Exchange& exchange, UINT index, const std::string& values,
                const ChannelTexts& texts = {"Name"});

/// Adds channels of any values, most of which other programs can hold.
void FillWithRandomChannels(Exchange& exchange, Random& random, UINT count);

std::string BytesOf(const std::filesystem::path& path);

/// What became of the lines of a channels.conf.
struct Accounts {
  std::size_t lines = 0;
  std::size_t taken = 0;
  std::size_t notUnderstood = 0;
  std::string missing;  ///< numbers of lines that are neither a channel nor in the report
};
Accounts AccountsOf(const Exchange& exchange, const std::string& bytes);

}  // namespace zortunedex::kit

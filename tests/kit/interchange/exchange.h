// Lists that leave and enter: the samples, and channels made at random.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kit/files/file_scan.h"
#include "kit/home.h"
#include "kit/interchange/list/exporting.h"
#include "kit/interchange/list/formats.h"
#include "kit/interchange/list/importing.h"
#include "kit/interchange/loss_report.h"
#include "kit/model/channel_table.h"
#include "support/random.h"

namespace zortunedex::kit {

/// A list in a data directory and what exports and imports of it need.
class Exchange {
 public:
  /// A set of the samples; empty where they have none.
  Exchange(DWORD country, InputSignalType signal);

  const interchange::ListContext& Context() const { return m_context; }
  interchange::ListContext& Context() { return m_context; }
  const std::vector<Channel>& Channels() const { return m_table.channels; }
  std::vector<Channel>& Channels() { return m_table.channels; }
  const NarrowText& Narrow() const { return m_narrow; }
  InputSignalType Signal() const { return m_table.signal; }

  /// What the channel file would give back of a channel.
  Channel Stored(const Channel& channel) const;

  /// The channels in the format.
  interchange::Export Out(const char* format) const;
  interchange::ExportRequest Request() const { return {m_context, m_table.channels}; }
  /// The list that a file of that format makes where there is none.
  interchange::Import In(const char* format, const std::string& bytes) const;
  interchange::Import In(const char* format, const interchange::Input& input) const;

 private:
  Home m_home;
  ChannelTable m_table;
  Database m_database;
  NarrowText m_narrow;
  interchange::ListContext m_context;
};

/// Country and signal type of every set of the samples.
std::vector<file_scan::ChannelSet> SampleSets();

/// A channel whose every value is any that the channel file can hold.
Channel RandomChannel(const Exchange& exchange, Random& random, UINT index);

/// "L101 networkName, L202 freq": code and field of every loss, each once, in order.
std::string CodesOf(const interchange::Losses& losses);

}  // namespace zortunedex::kit

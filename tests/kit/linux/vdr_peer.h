// The Video Disk Recorder as the judge of what is written for it.
#pragma once

#include <optional>
#include <string>

#include "support/temp_dir.h"

namespace zortunedex::kit {

/// Runs the program with a plugin that prints the channels it took and ends it before it opens a
/// device. The plugin is built in a directory that goes with the object.
class VdrPeer {
 public:
  VdrPeer();

  /// False where the program or its headers are missing.
  bool IsThere() const { return m_isThere; }
  /// The channels.conf that the program makes of this one.
  std::string Printed(const std::string& channels) const;
  /// How the program understands a channel: number, name, short name, provider, identity and
  /// parameters, "1|Name|Short|Provider|S19.2E-1-1-5|HC34M2S0" a line.
  std::string Understood(const std::string& channels) const;

 private:
  std::string Run(const std::string& channels, const char* mode) const;

  TempDir m_folder;
  bool m_isThere = false;
};

}  // namespace zortunedex::kit

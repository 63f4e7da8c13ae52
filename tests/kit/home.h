// A data directory for the tests of what hosts share.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "kit/model/database.h"
#include "support/temp_dir.h"

namespace zortunedex::kit {

/// A copy of the sample data, or of nothing.
class Home {
 public:
  enum class Start { Samples, Empty };
  explicit Home(Start start = Start::Samples) {
    if (start == Start::Empty) return;
    for (const auto& entry : std::filesystem::directory_iterator(ZORTUNEDEX_SAMPLES "/home")) {
      std::filesystem::copy_file(entry.path(), m_directory.File(entry.path().filename().string()));
    }
  }

  const TempDir& Files() const { return m_directory; }
  std::string Path() const { return m_directory.Path(); }
  std::string Channels() const { return m_directory.Read("ChanInfo.xml"); }
  Location At(DWORD country, InputSignalType signal) const { return {Path(), country, signal}; }
  Location Satellites() const { return At(1, InputSignalDVBSatellite); }
  Location OneSegment() const { return At(81, InputSignalISDBTerrestrialOneSeg); }

 private:
  TempDir m_directory;
};

inline WideText Wide(std::string_view ascii) { return WideText(ascii.begin(), ascii.end()); }

/// Expects the exception with exactly this message.
template <typename Exception, typename Call>
void ExpectRaised(const std::string& message, Call call) {
  try {
    call();
    ADD_FAILURE() << "nothing was raised instead of: " << message;
  } catch (const Exception& raised) {
    EXPECT_EQ(message, raised.what());
  }
}

}  // namespace zortunedex::kit

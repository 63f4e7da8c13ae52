// The samples with damages of all kinds: whatever is found, what a repair writes is read by the
// library as predicted, a second repair has nothing to do, and nothing is said that is not so.
#include <algorithm>

#include "kit/check/repair.h"
#include "kit/failure.h"
#include "kit/home.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

using check::Finding;

class Damager {
 public:
  explicit Damager(Random& random) : m_random(random) {}

  void Damage(std::string& bytes) {
    switch (m_random(8)) {
      case 0:
        bytes[Place(bytes)] = static_cast<char>(m_random(256));
        break;
      case 1:
        bytes.insert(Place(bytes), 1, kMarks[m_random(kMarks.size())]);
        break;
      case 2:
        bytes.erase(Place(bytes), 1 + m_random(40));
        break;
      case 3:
        bytes.insert(LineAt(bytes), LineOf(bytes, LineAt(bytes)));
        break;
      case 4: {
        const std::size_t line = LineAt(bytes);
        bytes.erase(line, LineOf(bytes, line).size());
        break;
      }
      case 5:
        ChangeNumber(bytes);
        break;
      case 6:
        InsertInValue(bytes);
        break;
      default:
        if (m_random(6) == 0) bytes.resize(bytes.size() - Place(bytes) % 2000);
    }
  }

 private:
  static constexpr std::string_view kMarks = "&<>\"'/= \t\n-!?;0";

  std::size_t Place(const std::string& bytes) {
    return m_random(static_cast<std::uint32_t>(bytes.size()));
  }
  std::size_t LineAt(const std::string& bytes) {
    const std::size_t end = bytes.rfind('\n', Place(bytes));
    return end == std::string::npos ? 0 : end + 1;
  }
  static std::string LineOf(const std::string& bytes, std::size_t line) {
    return bytes.substr(line, bytes.find('\n', line) - line + 1);
  }
  void ChangeNumber(std::string& bytes) {
    const std::size_t place = bytes.find_first_of("0123456789", Place(bytes));
    if (place == std::string::npos) return;
    constexpr const char* kNumbers[] = {"0", "-1", "049", "+5", "4294967295", "x", "12kHz", ""};
    bytes.replace(place, 1, kNumbers[m_random(std::size(kNumbers))]);
  }
  void InsertInValue(std::string& bytes) {
    const std::size_t place = bytes.find("name=\"", Place(bytes));
    if (place == std::string::npos) return;
    constexpr const char* kTexts[] = {"&", "<", "\"", " & ", "/>", "\xFF", "\x01", "&amp;", "\t"};
    bytes.insert(place + 6, kTexts[m_random(std::size(kTexts))]);
  }

  Random& m_random;
};

void ExpectSound(const check::Files& files, check::Repaired& result,
                 const check::RepairSettings& settings) {
  const check::Repaired again = check::Repair(result.after, settings);
  EXPECT_TRUE(again.after == result.after);
  EXPECT_TRUE(again.mended.empty());
  for (const Finding& finding : result.left) {
    EXPECT_NE("ZT900", finding.code->name) << finding.path << ": " << finding.text;
  }
  EXPECT_TRUE(!result.mended.empty() || result.after == files);
}

TEST(CheckDamagedSamples, AreRepairedSoundlyOrLeft) {
  const Home home;
  const check::Files samples = check::ReadFiles(home.Path());
  Random random(4242);
  Damager damager(random);
  int repaired = 0;
  constexpr std::string_view kNames[] = {check::kPresets,   check::kChannels, check::kCatalogue,
                                         check::kChannels,  check::kSettings, check::kChannels,
                                         check::kCatalogue, check::kSettings};
  for (int round = 0; round < 32; ++round) {
    check::Files files = samples;
    const std::string_view name = kNames[round % std::size(kNames)];
    std::string& bytes = *files.find(name)->second;
    const std::uint32_t count = 1 + random(4);
    for (std::uint32_t i = 0; i < count; ++i) damager.Damage(bytes);
    check::RepairSettings settings;
    if (round % 3 == 1) settings.options = {check::Option::Renumber, check::Option::FixUnits};
    if (round % 3 == 2) {
      settings.options = {check::Option::DropDuplicates, check::Option::DropUnrepairable};
    }
    SCOPED_TRACE("round " + std::to_string(round));
    try {
      check::Repaired result = check::Repair(files, settings);
      ExpectSound(files, result, settings);
      repaired += !result.mended.empty();
    } catch (const Failure& refused) {
      // Nothing is written then, and it says why.
      EXPECT_NE("", std::string(refused.what()));
      EXPECT_EQ(std::string::npos, std::string(refused.what()).find("the library would read"))
          << refused.what();
    }
  }
  EXPECT_GT(repaired, 12);
}

}  // namespace

}  // namespace zortunedex::kit

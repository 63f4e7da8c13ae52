// A check reads on two threads, and hosts may check and repair on several of theirs: what is found
// is what one reading after the other finds, in the same order.
#include "kit/check/directory_repair.h"
#include "kit/check/found_in_turn.h"
#include "kit/home.h"
#include "platform/component.h"
#include "support/in_threads.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

using check::Finding;

/// Samples in which many values are others.
class ChangedHome {
 public:
  explicit ChangedHome(unsigned number) {
    Random random(number);
    for (const std::string_view name : check::kDataFiles) {
      const std::string file(name);
      std::string bytes = m_home.Files().Read(file);
      for (int i = 0; i < 60; ++i) ChangeDigit(bytes, random);
      m_home.Files().Write(file, bytes);
    }
  }

  std::string Path() const { return m_home.Path(); }

 private:
  static void ChangeDigit(std::string& bytes, Random& random) {
    const std::size_t place =
        bytes.find_first_of("0123456789", random(static_cast<std::uint32_t>(bytes.size())));
    if (place != std::string::npos) bytes[place] = static_cast<char>('0' + random(10));
  }

  Home m_home;
};

TEST(CheckThreads, FindWhatIsFoundInTurn) {
  for (unsigned number = 1; number <= 4; ++number) {
    const ChangedHome home(number);
    const std::vector<Finding> found = check::CheckDirectory(home.Path(), {});
    EXPECT_FALSE(found.empty());
    EXPECT_EQ(FoundInTurn(home.Path()), TextOfFindings(found)) << number;
  }
}

struct Outcome {
  std::string found;
  std::string mended;
  std::string left;
  std::string foundAfterwards;

  bool operator==(const Outcome&) const = default;
};

Outcome CheckAndRepair(const std::string& directory) {
  Outcome outcome;
  outcome.found = TextOfFindings(check::CheckDirectory(directory, {}));
  const check::Repaired repaired = check::RepairDirectory({directory, "repair"}, {});
  outcome.mended = TextOfFindings(repaired.mended);
  outcome.left = TextOfFindings(repaired.left);
  outcome.foundAfterwards = TextOfFindings(check::CheckDirectory(directory, {}));
  return outcome;
}

TEST(CheckThreads, CheckAndRepairDirectoriesOfTheirOwn) {
  const ChangedHome first(77);
  const Outcome expected = CheckAndRepair(first.Path());
  EXPECT_EQ(expected.left, expected.foundAfterwards);
  EXPECT_NE("[]", expected.mended);
  std::vector<Outcome> outcomes(kThreads);
  InThreads([&](UINT number) {
    [[maybe_unused]] const Component component;
    const ChangedHome home(77);
    outcomes[number] = CheckAndRepair(home.Path());
  });
  for (const Outcome& outcome : outcomes) EXPECT_EQ(expected, outcome);
}

}  // namespace

}  // namespace zortunedex::kit

// Every call of replacing a file fails or stops half-way: the file is the old or the new one,
// whole, and the answer never promises more than that.
#include <gtest/gtest.h>

#include "platform/host.h"
#include "reliability/disk_faults.h"
#include "support/temp_dir.h"

namespace zortunedex::kit {

namespace {

using disk_faults::Fault;

constexpr char kFile[] = "table.csv";
const std::string kOld = "old";
const std::string kNew(300'000, 'n');  // more than what is collected before it is written

/// Open, write, sync and rename come before the new file is there.
constexpr int kFewestCallsBefore = 4;

using Write = bool (*)(const std::string& path, std::string_view bytes);

int CallsOf(Write write, const std::string& before) {
  const TempDir directory;
  if (!before.empty()) directory.Write(kFile, before);
  const disk_faults::Scope scope(Fault::Short, 1'000'000);
  EXPECT_TRUE(write(directory.File(kFile), kNew));
  return disk_faults::Calls();
}

struct Result {
  bool answer;
  std::string content;
};

Result Hit(Write write, const std::string& before, Fault fault, int position) {
  const TempDir directory;
  if (!before.empty()) directory.Write(kFile, before);
  Result result;
  {
    const disk_faults::Scope scope(fault, position);
    result.answer = write(directory.File(kFile), kNew);
  }
  result.content = directory.Read(kFile);
  // No temporary file, and no empty one where there was none.
  EXPECT_EQ(result.content.empty() ? 0U : 1U, directory.Count()) << position;
  return result;
}

TEST(ReplaceFileFaults, LastingOnesLeaveTheOldFile) {
  const int calls = CallsOf(host::ReplaceFile, kOld);
  for (const Fault fault : {Fault::NoSpace, Fault::NoRights, Fault::Device}) {
    int kept = 0;
    for (int position = 0; position < calls; ++position) {
      const Result result = Hit(host::ReplaceFile, kOld, fault, position);
      if (result.content == kOld) {
        EXPECT_FALSE(result.answer) << position;
        // Once the file is there, every later fault finds it there.
        EXPECT_EQ(kept, position);
        ++kept;
      } else {
        EXPECT_TRUE(result.content == kNew) << position;
      }
    }
    EXPECT_GE(kept, kFewestCallsBefore);
  }
}

TEST(ReplaceFileFaults, ShortWritesGoOn) {
  const int calls = CallsOf(host::ReplaceFile, kOld);
  for (int position = 0; position < calls; ++position) {
    const Result result = Hit(host::ReplaceFile, kOld, Fault::Short, position);
    EXPECT_TRUE(result.content == (result.answer ? kNew : kOld)) << position;
    EXPECT_TRUE(result.answer || !disk_faults::kIsInterruptible) << position;
  }
}

TEST(ReplaceFileFaults, InterruptionsLoseNothing) {
  if (!disk_faults::kIsInterruptible) GTEST_SKIP() << "calls are not interrupted here";
  const int calls = CallsOf(host::ReplaceFile, kOld);
  for (int position = 0; position < calls; ++position) {
    const Result result = Hit(host::ReplaceFile, kOld, Fault::Interrupted, position);
    EXPECT_TRUE(result.content == kNew || (result.content == kOld && !result.answer)) << position;
  }
}

TEST(WriteNewFileFaults, LeaveNothingOrTheWholeFile) {
  const int calls = CallsOf(host::WriteNewFile, "");
  EXPECT_GE(calls, kFewestCallsBefore);
  for (const Fault fault : {Fault::NoSpace, Fault::NoRights, Fault::Device}) {
    int left = 0;
    for (int position = 0; position < calls; ++position) {
      const Result result = Hit(host::WriteNewFile, "", fault, position);
      if (result.answer) {
        EXPECT_TRUE(result.content == kNew) << position;
      } else {
        EXPECT_EQ("", result.content) << position;
        ++left;
      }
    }
    EXPECT_GE(left, kFewestCallsBefore);
  }
}

}  // namespace

}  // namespace zortunedex::kit

#include "kit/interchange/services/tuning_tables.h"

#include <gtest/gtest.h>

#include "kit/failure.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

using interchange::ReadTuningTables;
using interchange::System;
using interchange::Tuning;

constexpr const char* kTable =
    "[CHANNEL]\n\tDELIVERY_SYSTEM = DVBS2\n\tFREQUENCY = 11493750\n\tPOLARIZATION = HORIZONTAL\n"
    "\tSYMBOL_RATE = 22000000\n\tINNER_FEC = 8/9\n\tMODULATION = PSK/8\n\tROLLOFF = 20\n"
    "\tPILOT = ON\n"
    "[CHANNEL]\n\tDELIVERY_SYSTEM = DVBS\n\tFREQUENCY = 12545000\n\tPOLARIZATION = VERTICAL\n"
    "\tSYMBOL_RATE = 22000000\n\tINNER_FEC = 5/6\n\tROLLOFF = AUTO\n\tPILOT = AUTO\n"
    "[CHANNEL]\n\tDELIVERY_SYSTEM = DVBS2\n\tPOLARIZATION = VERTICAL\n";

TEST(TuningTables, KnowWhatTheCatalogueHasNoWordsFor) {
  const TempDir folder;
  folder.Write("Astra-19.2E", kTable);
  folder.Write("notes", "nothing of the kind");
  const std::vector<Tuning> tunings = ReadTuningTables(folder.Path());
  ASSERT_EQ(2U, tunings.size());  // an entry without a frequency cannot be used
  EXPECT_EQ(11'493'750U, tunings[0].frequency);
  EXPECT_EQ(192, tunings[0].position);
  EXPECT_EQ(BDA_POLARISATION_LINEAR_H, tunings[0].polarisation);
  EXPECT_EQ(22'000U, tunings[0].symbolRate);
  EXPECT_EQ(BDA_BCC_RATE_8_9, tunings[0].fec);
  EXPECT_EQ(BDA_MOD_8PSK, tunings[0].modulation);
  EXPECT_EQ(System::Second, tunings[0].system);
  EXPECT_EQ(20U, tunings[0].rollOff);
  EXPECT_EQ(true, tunings[0].pilot);
  EXPECT_EQ(0U, tunings[1].rollOff);
  EXPECT_EQ(std::nullopt, tunings[1].pilot);
  EXPECT_EQ(System::First, tunings[1].system);
  EXPECT_EQ(BDA_MOD_QPSK, tunings[1].modulation);
  EXPECT_EQ(BDA_BCC_RATE_5_6, tunings[1].fec);
}

TEST(TuningTables, RefuseAFolderWithoutOne) {
  const TempDir folder;
  ExpectRaised<Failure>(folder.Path() + " has no transponder table",
                        [&] { ReadTuningTables(folder.Path()); });
  ExpectRaised<Failure>(folder.File("no") + " has no transponder table",
                        [&] { ReadTuningTables(folder.File("no")); });
}

}  // namespace

}  // namespace zortunedex::kit

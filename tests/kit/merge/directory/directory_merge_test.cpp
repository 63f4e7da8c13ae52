// A scan into the list of a directory, as hosts ask for it.
#include "kit/merge/directory/directory_merge.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/merge/merge_report.h"

namespace zortunedex::kit {

namespace {

const std::string kScans = ZORTUNEDEX_SAMPLES "/scans/";

class DirectoryMergeTest : public testing::Test {
 protected:
  Location Here() const { return m_home.At(49, InputSignalDVBSatellite); }

  merge::MergePlan Merge(const std::string& scan) const {
    merge::DirectoryMerge merging({Here()}, merge::OpenScan(kScans + scan));
    const auto base = merging.KeptBase();
    EXPECT_EQ(m_isMerged, base.has_value());
    m_isMerged = true;
    merge::MergePlan plan = merging.Plan(base ? &*base : nullptr);
    merging.Save(plan);
    return plan;
  }

  const Home m_home{Home::Start::Empty};
  mutable bool m_isMerged = false;
};

TEST_F(DirectoryMergeTest, KeepsTheBaseForTheNextOne) {
  std::filesystem::create_directory(m_home.Files().File("tunedex-history"));
  EXPECT_TRUE(Merge("yesterday.channels.conf").changesList);
  const std::size_t count = ReadTable(Here()).channels.size();
  const merge::MergePlan plan = Merge("today.channels.conf");
  EXPECT_EQ(count + 3, ReadTable(Here()).channels.size());
  EXPECT_NE(
      std::string::npos,
      merge::PlanText(plan, merge::PlanKind::Merge).find("M103 renamed zdf_neo HD -> ZDFneo HD"));
  EXPECT_FALSE(Merge("today.channels.conf").changesList);
}

TEST_F(DirectoryMergeTest, TellsWhatTheFileHoldsBeyondTheList) {
  const merge::DirectoryMerge merging({Here()},
                                      merge::OpenScan(kScans + "w_scan_cpp.channels.conf"));
  const auto losses = merging.Losses();
  ASSERT_TRUE(losses.has_value());
  EXPECT_EQ(10U, losses->read);
  EXPECT_TRUE(losses->losses.Has(interchange::Code::SignalNotOfList));
}

TEST_F(DirectoryMergeTest, TakesTheDirectoryOfAnotherHost) {
  const Home other;
  merge::DirectoryMerge merging({Here()}, merge::OpenScan(other.Path()));
  EXPECT_FALSE(merging.Losses().has_value());
  const merge::MergePlan plan = merging.Plan(nullptr);
  EXPECT_EQ(58U, merge::Apply(plan).channels.size());
  ExpectRaised<Failure>(other.Path() + " has no channels of 33 DVBSatellite; it has " +
                            "1 ATSCAntenna, 1 ATSCCable, 49 AnalogCable, 49 FMRadio, "
                            "49 DVBSatellite, 49 DVBTerrestrial, 81 ISDBTerrestrialOneSeg, "
                            "82 TDMBMobile, 358 DVBHandheld",
                        [&] {
                          merge::DirectoryMerge({m_home.At(33, InputSignalDVBSatellite)},
                                                merge::OpenScan(other.Path()));
                        });
}

TEST_F(DirectoryMergeTest, RefusesWhatIsNoScan) {
  ExpectRaised<Failure>("none is not there or cannot be read", [] { merge::OpenScan("none"); });
  m_home.Files().Write("letter", "Dear Sir or Madam");
  const std::string letter = m_home.Files().File("letter");
  ExpectRaised<InvalidArgument>(letter + ": what kind of file it is cannot be told",
                                [&] { merge::OpenScan(letter); });
}

}  // namespace

}  // namespace zortunedex::kit

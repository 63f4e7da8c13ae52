#include "kit/satellites/catalogue.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/satellites/checked_catalogue.h"

namespace zortunedex::kit {

namespace {

TEST(Catalogues, ReadBackAsTheyAreWritten) {
  const Home home;
  SatelliteCatalogue catalogue = ReadCatalogue(home.Satellites());
  ASSERT_FALSE(catalogue.satellites.empty());
  ASSERT_FALSE(catalogue.lnbs.empty());
  EXPECT_GT(catalogue.TransponderCount(), catalogue.satellites.size());
  home.Files().Write("SatelliteInfo.xml", CheckedXml(catalogue));
  const SatelliteCatalogue found = ReadCatalogue(home.Satellites());
  EXPECT_EQ(catalogue.satellites, found.satellites);
  EXPECT_EQ(catalogue.lnbs, found.lnbs);
}

TEST(Catalogues, RefuseWhatWouldNotReadBack) {
  SatelliteCatalogue catalogue;
  Satellite satellite;
  satellite.id = "Far";
  satellite.division = static_cast<ESatDivision>(10);  // has no word in the file
  satellite.ku_band.resize(1);
  catalogue.satellites.push_back(satellite);
  ExpectRaised<Failure>("satellite Far would not read back", [&] { CheckedXml(catalogue); });
}

TEST(Catalogues, NameWhatTheyHave) {
  const Home home;
  const SatelliteCatalogue catalogue = ReadCatalogue(home.Satellites());
  const Satellite& first = catalogue.satellites.front();
  EXPECT_EQ(&first, &catalogue.FindSatellite(first.id));
  EXPECT_THROW(catalogue.FindSatellite("none"), Failure);
  EXPECT_THROW(catalogue.FindSatellite("\xFF"), InvalidArgument);
  ExpectRaised<Failure>("the catalogue has no LNB type 'x'; it has none",
                        [] { SatelliteCatalogue().FindLnb("x"); });
}

TEST(Catalogues, AreMadeOfTables) {
  const TempDir tables;
  tables.Write("Astra-19.2E",
               "[CHANNEL]\nDELIVERY_SYSTEM = DVBS\nFREQUENCY = 11362000\nPOLARIZATION = "
               "HORIZONTAL\nSYMBOL_RATE = 22000000\nINNER_FEC = 2/3\n");
  tables.Write("noise", "nothing of the kind");
  CatalogueReport report;
  const SatelliteCatalogue catalogue = CatalogueOfTables(tables.Path(), report);
  ASSERT_EQ(1U, catalogue.satellites.size());
  EXPECT_EQ(192, catalogue.satellites[0].longitude);
  ASSERT_EQ(1U, catalogue.satellites[0].ku_band.size());
  EXPECT_EQ(11362000U, catalogue.satellites[0].ku_band[0].frequency);
  ASSERT_EQ(1U, report.files.size());
  EXPECT_EQ("noise", report.files[0].file);
  EXPECT_TRUE(report.entries.empty());
  ExpectRaised<Failure>(tables.File("none") + " is no folder",
                        [&] { CatalogueOfTables(tables.File("none"), report); });
}

}  // namespace

}  // namespace zortunedex::kit

// Linux only: MSXML writes other bytes, and Wine others again
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "database/tunedex.h"
#include "platform/com_ptr.h"
#include "support/expect.h"
#include "support/temp_dir.h"

// Indentation, the order of everything and every character survive.
TEST(SampleHousehold, AnUntouchedDocumentIsWrittenAsItWasRead) {
  std::ifstream file(std::string(ZORTUNEDEX_SAMPLES) + "/home/ChanInfo.xml", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  ASSERT_FALSE(bytes.empty());
  TempDir dir;
  dir.Write("ChanInfo.xml", bytes);
  ComPtr<IZorTunedex> database;
  ExpectHr(S_OK, CTunedex::CreateInstance(nullptr, IID_IZorTunedex,
                                          reinterpret_cast<void**>(database.Receive())));
  ExpectHr(S_OK, database->Open(Wide(dir.Path()).Get(), 49, InputSignalDVBSatellite));
  ExpectHr(S_OK, database->SetStorageType(StorageXML));
  dir.Write("ChanInfo.xml", "replaced by the save");
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(bytes, dir.Read("ChanInfo.xml"));
  ExpectHr(S_OK, database->Close());
}

#include <gtest/gtest.h>

#include <string>

#include "support/expect.h"
#include "support/temp_dir.h"
#include "xml/files/xml_chan_parser.h"

namespace {

const std::string kTable =
    "<CHANNELTABLE><Country countrycode=\"1\"><ChannelSet/></Country></CHANNELTABLE>";

}  // namespace

TEST(ChanFileProtected, ReadOnlyFileStays) {
  const TempDir dir;
  const std::string path = dir.File("ChanInfo.xml");
  dir.Write("ChanInfo.xml", kTable);
  ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
  CXmlChanParser parser;
  ExpectHr(S_OK, parser.Open(path));
  ExpectHr(S_OK, parser.Load());
  parser.SetDirty(true);
  ExpectHr(S_OK, parser.Save());
  EXPECT_EQ(kTable, dir.Read("ChanInfo.xml"));
  parser.SetPreFormatted(true);
  ExpectHr(E_FAIL, parser.Save());
  EXPECT_EQ(kTable, dir.Read("ChanInfo.xml"));
  EXPECT_EQ(1U, dir.Count());
  ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL));
  ExpectHr(S_OK, parser.Save());
  EXPECT_NE(kTable, dir.Read("ChanInfo.xml"));
}

TEST(ChanFileProtected, FileThatAnotherProgramHasOpenStays) {
  const TempDir dir;
  const std::string path = dir.File("ChanInfo.xml");
  dir.Write("ChanInfo.xml", kTable);
  CXmlChanParser parser;
  ExpectHr(S_OK, parser.Open(path));
  ExpectHr(S_OK, parser.Load());
  const HANDLE other = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, other);
  parser.SetDirty(true);
  ExpectHr(S_OK, parser.Save());
  parser.SetPreFormatted(true);
  ExpectHr(E_FAIL, parser.Save());
  CloseHandle(other);
  EXPECT_EQ(kTable, dir.Read("ChanInfo.xml"));
  EXPECT_EQ(1U, dir.Count());
}
